#include "desktop/orbit/form_satellites.h"

#include <QHBoxLayout>
#include <QKeyEvent>
#include <QPushButton>
#include <QScrollBar>
#include <QVBoxLayout>

#include "desktop/main/bindings.h"
#include "desktop/main/form_parts.h"
#include "desktop/main/style.h"
#include "orbit/satellite_table.h"

namespace glintara::desktop {

namespace {

constexpr int kListPixels = 12;
constexpr QSize kFirstSize(460, 560);

}  // namespace

FormSatellites::FormSatellites(Application& app, QWidget* parent) : QDialog(parent), app_(app), model_(app.Data) {
    setObjectName("FormSatellites");
    setWindowTitle("Satellites");
    auto* column = new QVBoxLayout(this);
    column->setSpacing(kFrameGap);
    list_ = new QListView;
    list_->setObjectName("LSat");
    list_->setModel(&model_);
    list_->setSelectionMode(QAbstractItemView::ExtendedSelection);
    list_->setEditTriggers(QAbstractItemView::NoEditTriggers);
    list_->setFont(NumberFont(kListPixels));
    list_->setUniformItemSizes(true);
    list_->setAccessibleName("Satellites");
    list_->setToolTip("Double click: the satellite that the main window shows. Type a name or a number to find it.");
    list_->installEventFilter(this);
    column->addWidget(list_, 1);

    count_ = new QLabel;
    count_->setObjectName("LSel");
    count_->setProperty("quiet", true);
    working_ = new QLabel;
    working_->setObjectName("LWorkingSat");
    working_->setTextFormat(Qt::PlainText);
    working_->setFont(NumberFont(kListPixels));
    working_->setProperty("accent", true);
    working_->setWordWrap(true);
    working_->setMinimumHeight(working_->fontMetrics().lineSpacing());
    working_->setToolTip("The satellite that the main window shows");
    working_->setAccessibleName("Working satellite");
    column->addWidget(working_);
    column->addWidget(count_);
    column->addLayout(BuildButtons());

    connect(
        list_->selectionModel(), &QItemSelectionModel::selectionChanged, this, [this] { TakeSelection(); });
    connect(list_, &QListView::doubleClicked, this, [this](const QModelIndex& row) { MakeWorking(row); });
    resize(kFirstSize);
    UpDateAll();
}

FormSatellites::~FormSatellites() {
    // Before the rows that it shows.
    delete list_;
}

QLayout* FormSatellites::BuildButtons() {
    auto* row = new QHBoxLayout;
    row->setSpacing(kControlGap);
    const auto add = [this, row](const char* name, const char* caption, const char* toolTip, auto action) {
        auto* button = new QPushButton(caption);
        button->setObjectName(name);
        button->setToolTip(toolTip);
        connect(button, &QPushButton::clicked, this, action);
        row->addWidget(button);
        return button;
    };
    add(
        "CSelectAll", "Select All", "Select every satellite", [this] { list_->selectAll(); });
    add(
        "CDeselectAll", "Deselect All", "Select none", [this] { list_->clearSelection(); });
    add("CInvertSel", "Invert Selection", "Select those that are not selected, and no others",
        [this] { InvertSelection(); });
    row->addStretch();
    add("CClose", "CLOSE", "Close this window", [this] { close(); })->setDefault(true);
    return row;
}

void FormSatellites::UpDateAll() {
    const QModelIndex current = list_->currentIndex();
    const int orbitNumber = current.isValid() ? model_.OrbitNumberOf(current.row()) : 0;
    const int scrolled = list_->verticalScrollBar()->value();
    busy_ = true;
    if (model_.Renew()) {
        const int row = model_.RowOf(orbitNumber);
        list_->selectionModel()->setCurrentIndex(model_.index(row < 0 ? 0 : row), QItemSelectionModel::NoUpdate);
        list_->doItemsLayout();
        list_->verticalScrollBar()->setValue(scrolled);
    }
    busy_ = false;
    ShowSelection(model_.RowsThatAre(true));
    ShowWorkingSatellite();
}

void FormSatellites::ShowWorkingSatellite() {
    model_.Reorder();
    const CommonData& data = app_.Data;
    working_->setText(data.SatCount > 0 ? ToQt(SatelliteListLine(data.Satellite(data.SatCount))) : QString());
}

void FormSatellites::ShowSelection(const QItemSelection& selection) {
    busy_ = true;
    list_->selectionModel()->select(selection, QItemSelectionModel::ClearAndSelect);
    busy_ = false;
    CountSelection();
}

void FormSatellites::TakeSelection() {
    if (busy_) return;
    model_.TakeSelection(list_->selectionModel()->selection());
    CountSelection();
}

void FormSatellites::InvertSelection() {
    ShowSelection(model_.RowsThatAre(false));
    TakeSelection();
}

void FormSatellites::CountSelection() {
    int selected = 0;
    for (const QItemSelectionRange& range : list_->selectionModel()->selection()) selected += range.height();
    count_->setText(QString("%1 of %2 selected").arg(selected).arg(model_.rowCount()));
}

void FormSatellites::MakeWorking(const QModelIndex& row) {
    if (row.isValid()) {
        ChangeWorkingSatellite(app_, model_.OrbitNumberOf(row.row()));
        ShowWorkingSatellite();
    }
}

bool FormSatellites::eventFilter(QObject* watched, QEvent* event) {
    if (watched == list_ && event->type() == QEvent::KeyPress) {
        const int key = static_cast<QKeyEvent*>(event)->key();
        if (key == Qt::Key_Return || key == Qt::Key_Enter) {
            MakeWorking(list_->currentIndex());
            return true;
        }
    }
    return QDialog::eventFilter(watched, event);
}

}  // namespace glintara::desktop
