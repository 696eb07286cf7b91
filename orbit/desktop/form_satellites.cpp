#include "orbit/desktop/form_satellites.h"

#include <QHBoxLayout>
#include <QPushButton>
#include <QVBoxLayout>
#include <algorithm>
#include <numeric>
#include <vector>

#include "core/desktop/bindings.h"
#include "core/desktop/style.h"
#include "orbit/satellite_table.h"

namespace glintara::desktop {

namespace {

constexpr int kListPixels = 12;
constexpr QSize kFirstSize(430, 520);

std::vector<int> IndicesByOrbitNumber(const CommonData& data) {
    std::vector<int> indices(static_cast<std::size_t>(data.SatCount));
    std::iota(indices.begin(), indices.end(), 1);
    std::stable_sort(indices.begin(), indices.end(),
                     [&data](int a, int b) { return data.Satellite(a).OrbitNumber < data.Satellite(b).OrbitNumber; });
    return indices;
}

}  // namespace

FormSatellites::FormSatellites(Application& app, QWidget* parent) : QDialog(parent), app_(app) {
    setWindowTitle("Satellites");
    auto* column = new QVBoxLayout(this);
    list_ = new QListWidget;
    list_->setSelectionMode(QAbstractItemView::ExtendedSelection);
    list_->setFont(NumberFont(kListPixels));
    list_->setUniformItemSizes(true);
    list_->setAccessibleName("Satellites");
    column->addWidget(list_, 1);

    count_ = new QLabel;
    count_->setProperty("quiet", true);
    column->addWidget(count_);

    auto* row = new QHBoxLayout;
    const auto addButton = [this, row](const char* caption, auto action) {
        auto* button = new QPushButton(caption);
        button->setAutoDefault(false);
        connect(button, &QPushButton::clicked, this, action);
        row->addWidget(button);
    };
    addButton("Select All", [this] { Select(true); });
    addButton("Deselect All", [this] { Select(false); });
    addButton("Invert Selection", [this] { InvertSelection(); });
    row->addStretch();
    addButton("CLOSE", [this] { close(); });
    column->addLayout(row);

    connect(list_, &QListWidget::itemSelectionChanged, this, [this] { TakeSelection(); });
    connect(list_, &QListWidget::itemDoubleClicked, this, [this](const QListWidgetItem* item) {
        const int index = item->data(Qt::UserRole).toInt();
        ChangeWorkingSatellite(app_, app_.Data.Satellite(index).OrbitNumber);
        UpDateAll();
    });
    resize(kFirstSize);
    UpDateAll();
}

void FormSatellites::UpDateAll() {
    busy_ = true;
    const int position = list_->currentRow();
    list_->clear();
    for (const int index : IndicesByOrbitNumber(app_.Data)) {
        const SatRecord& satellite = app_.Data.Satellite(index);
        auto* item = new QListWidgetItem(ToQt(SatelliteListLine(satellite)), list_);
        item->setData(Qt::UserRole, index);
        item->setSelected(satellite.Selected);
    }
    list_->setCurrentRow(std::min(position, list_->count() - 1), QItemSelectionModel::NoUpdate);
    busy_ = false;
    CountSelection();
}

void FormSatellites::TakeSelection() {
    if (busy_) {
        return;
    }
    for (int row = 0; row < list_->count(); ++row) {
        const QListWidgetItem* const item = list_->item(row);
        app_.Data.Satellite(item->data(Qt::UserRole).toInt()).Selected = item->isSelected();
    }
    CountSelection();
}

void FormSatellites::Select(bool all) { all ? list_->selectAll() : list_->clearSelection(); }

void FormSatellites::InvertSelection() {
    busy_ = true;
    for (int row = 0; row < list_->count(); ++row) {
        list_->item(row)->setSelected(!list_->item(row)->isSelected());
    }
    busy_ = false;
    TakeSelection();
}

void FormSatellites::CountSelection() {
    count_->setText(QString("%1 of %2 selected").arg(list_->selectedItems().size()).arg(list_->count()));
}

}  // namespace glintara::desktop
