#include "desktop/orbit/form_satellites.h"

#include <QCheckBox>
#include <QGridLayout>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLineEdit>
#include <QMouseEvent>
#include <QPlainTextEdit>
#include <QScrollBar>
#include <QVBoxLayout>
#include <algorithm>

#include "desktop/main/bindings.h"
#include "desktop/main/form_parts.h"
#include "desktop/main/style.h"
#include "orbit/satellite_manager.h"
#include "orbit/satellite_table.h"

namespace glintara::desktop {

namespace {

/// A name of 24 characters, the longest that a catalogue gives, has room in the list.
constexpr int kListPixels = 11;
constexpr int kWorkingPixels = 12;
constexpr int kElementPixels = 11;
constexpr int kInnerMargin = 6;
constexpr int kElementLines = 3;
constexpr int kLeastListRows = 8;
constexpr QSize kFirstSize(640, 560);

QGridLayout* GridIn(QWidget& frame) {
    auto* grid = new QGridLayout(&frame);
    grid->setContentsMargins(kInnerMargin, kInnerMargin, kInnerMargin, kInnerMargin);
    grid->setHorizontalSpacing(kControlGap);
    grid->setVerticalSpacing(kControlGap);
    return grid;
}

void AddField(QGridLayout& grid, int row, Label& caption, const char* labelName, TextBox& box, const char* name) {
    QLabel* const label = MakeLabel(caption, labelName);
    auto* field = new QLineEdit;
    field->setObjectName(name);
    Bind(*field, box);
    field->setAccessibleName(ToQt(caption.Caption));
    label->setBuddy(field);
    grid.addWidget(label, row, 0);
    grid.addWidget(field, row, 1, 1, 2);
}

}  // namespace

FormSatellites::FormSatellites(Application& app, QWidget* parent)
    : QDialog(parent), app_(app), form_(app.Satellites), model_(app.Data) {
    setObjectName("FormSatellites");
    setWindowTitle("Satellites");
    BuildList();
    auto* column = new QVBoxLayout(this);
    column->setSpacing(kFrameGap);
    auto* row = new QHBoxLayout;
    row->setSpacing(kFrameGap);
    auto* listColumn = new QVBoxLayout;
    listColumn->setSpacing(kControlGap);
    listColumn->addWidget(list_, 1);
    QLabel* const count = MakeLabel(form_.LSel, "LSel");
    count->setProperty("quiet", true);
    listColumn->addWidget(count);
    row->addLayout(listColumn, 1);
    auto* frames = new QVBoxLayout;
    frames->setSpacing(kFrameGap);
    frames->addWidget(BuildFilter());
    frames->addWidget(BuildSelection());
    frames->addWidget(BuildSelected());
    frames->addStretch(1);
    row->addLayout(frames);
    column->addLayout(row, 1);
    column->addWidget(BuildWorking());
    auto* last = new QHBoxLayout;
    last->addStretch(1);
    last->addWidget(MakeButton(form_.CClose, "CClose"));
    column->addLayout(last);

    form_.LSat.Shown.SetWatcher([this] { ShowList(); });
    form_.LSat.Order.SetWatcher([this] { model_.Reorder(); });
    resize(kFirstSize);
    satellite_manager::ShowAll(app_);
    satellite_manager::ShowWorkingSatellite(app_);
}

FormSatellites::~FormSatellites() {
    form_.LSat.Shown.SetWatcher({});
    form_.LSat.Order.SetWatcher({});
    // The list goes before the rows that it shows, and what it tells of its end is not for half a list to answer.
    list_->removeEventFilter(this);
    list_->viewport()->removeEventFilter(this);
    delete list_;
}

void FormSatellites::BuildList() {
    list_ = new QListView;
    list_->setObjectName("LSat");
    list_->setModel(&model_);
    list_->setSelectionMode(QAbstractItemView::ExtendedSelection);
    list_->setEditTriggers(QAbstractItemView::NoEditTriggers);
    list_->setFont(NumberFont(kListPixels));
    list_->setUniformItemSizes(true);
    list_->setAccessibleName("Satellites");
    list_->setToolTip(
        "In brackets, X: orbit hidden, disabled. Double click: the satellite that the main window shows. "
        "Type a name or a number to find it.");
    list_->setMinimumHeight(kLeastListRows * list_->fontMetrics().lineSpacing());
    list_->installEventFilter(this);
    list_->viewport()->installEventFilter(this);
    connect(list_->selectionModel(), &QItemSelectionModel::selectionChanged, this, [this] { TakeSelection(); });
    connect(list_, &QListView::doubleClicked, this, [this](const QModelIndex& row) {
        // The first press of the two has left one line of the many that were selected.
        if (beforePress_.indexes().size() > 1)
            list_->selectionModel()->select(beforePress_, QItemSelectionModel::ClearAndSelect);
        MakeWorking(row);
    });
}

QWidget* FormSatellites::BuildFilter() {
    QGroupBox* const frame = MakeFrame(form_.FrameFilter, "FrameFilter");
    QGridLayout* const grid = GridIn(*frame);
    AddField(*grid, 0, form_.LWith, "LWith", form_.TWith, "TWith");
    AddField(*grid, 1, form_.LWithout, "LWithout", form_.TWithout, "TWithout");
    auto* matchCase = new QCheckBox;
    matchCase->setObjectName("CMCase");
    Bind(*matchCase, form_.CMCase);
    grid->addWidget(matchCase, 2, 0);
    QPushButton* const select = MakeButton(form_.CFindOr, "CFindOr");
    // What Return presses in the fields.
    select->setDefault(true);
    connect(select, &QPushButton::clicked, this, [this] { ShowFirstSelected(); });
    grid->addWidget(select, 2, 1);
    grid->addWidget(MakeButton(form_.CFindAnd, "CFindAnd"), 2, 2);
    return frame;
}

QWidget* FormSatellites::BuildSelection() {
    QGroupBox* const frame = MakeFrame(form_.FrameSelection, "FrameSelection");
    QGridLayout* const grid = GridIn(*frame);
    grid->addWidget(MakeButton(form_.CSelectAll, "CSelectAll"), 0, 0);
    grid->addWidget(MakeButton(form_.CDeselectAll, "CDeselectAll"), 0, 1);
    grid->addWidget(MakeButton(form_.CInvertSel, "CInvertSel"), 1, 0);
    grid->addWidget(MakeButton(form_.CSelEnabled, "CSelEnabled"), 1, 1);
    grid->addWidget(MakeButton(form_.CAdvSelection, "CAdvSelection"), 2, 0, 1, 2);
    return frame;
}

QWidget* FormSatellites::BuildSelected() {
    QGroupBox* const frame = MakeFrame(form_.FrameSelected, "FrameSelected");
    QGridLayout* const grid = GridIn(*frame);
    grid->addWidget(MakeButton(form_.CEnable, "CEnable"), 0, 0);
    grid->addWidget(MakeButton(form_.CDisable, "CDisable"), 0, 1);
    grid->addWidget(MakeButton(form_.CShowOrbit, "CShowOrbit"), 1, 0);
    grid->addWidget(MakeButton(form_.CHideOrbit, "CHideOrbit"), 1, 1);
    grid->addWidget(MakeButton(form_.CClearAllMirrors, "CClearAllMirrors"), 2, 0, 1, 2);
    return frame;
}

QWidget* FormSatellites::BuildWorking() {
    auto* part = new QWidget;
    auto* column = new QVBoxLayout(part);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(kControlGap);
    QLabel* const line = MakeLabel(form_.LWorkingSat, "LWorkingSat");
    line->setFont(NumberFont(kWorkingPixels));
    line->setProperty("accent", true);
    line->setWordWrap(true);
    line->setMinimumHeight(line->fontMetrics().lineSpacing());
    line->setAccessibleName("Working satellite");
    column->addWidget(line);
    auto* elements = new QPlainTextEdit;
    elements->setObjectName("TTLE");
    elements->setFont(NumberFont(kElementPixels));
    elements->setReadOnly(true);
    elements->setTabChangesFocus(true);
    elements->setLineWrapMode(QPlainTextEdit::NoWrap);
    // Behind the last line end stands an empty line.
    elements->setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    Bind(*elements, form_.TTLE);
    elements->setAccessibleName("Element set of the working satellite");
    elements->setToolTip(ToQt(form_.TTLE.ToolTip));
    constexpr int kFieldRoom = 22;  // padding, border and the document's own margin
    elements->setFixedHeight(kElementLines * elements->fontMetrics().lineSpacing() + kFieldRoom);
    column->addWidget(elements);
    return part;
}

void FormSatellites::ShowList() {
    const QModelIndex current = list_->currentIndex();
    const int orbitNumber = current.isValid() ? model_.OrbitNumberOf(current.row()) : 0;
    const int scrolled = list_->verticalScrollBar()->value();
    if (model_.Renew()) {
        const int row = model_.RowOf(orbitNumber);
        list_->selectionModel()->setCurrentIndex(model_.index(row < 0 ? 0 : row), QItemSelectionModel::NoUpdate);
        list_->doItemsLayout();
        list_->verticalScrollBar()->setValue(scrolled);
        beforePress_ = {};
    }
    ShowSelection();
}

void FormSatellites::ShowSelection() {
    list_->selectionModel()->select(model_.RowsThatAre(true), QItemSelectionModel::ClearAndSelect);
}

/// What the filter finds comes into sight, unless some of it is.
void FormSatellites::ShowFirstSelected() {
    const QItemSelection selected = model_.RowsThatAre(true);
    if (selected.isEmpty()) return;
    const QRect sight = list_->viewport()->rect();
    const auto isInSight = [this, &sight](const QItemSelectionRange& range) {
        const QRect rows = list_->visualRect(range.topLeft()) | list_->visualRect(range.bottomRight());
        return rows.intersects(sight);
    };
    if (std::none_of(selected.begin(), selected.end(), isInSight))
        list_->scrollTo(selected.first().topLeft(), QAbstractItemView::PositionAtTop);
}

/// The window opens on the satellite that works.
void FormSatellites::ShowCurrent() {
    if (app_.Data.SatCount < 1) return;
    const int row = model_.RowOf(app_.Data.Satellite(app_.Data.WorkingSat()).OrbitNumber);
    if (row < 0) return;
    list_->selectionModel()->setCurrentIndex(model_.index(row), QItemSelectionModel::NoUpdate);
    list_->scrollTo(model_.index(row), QAbstractItemView::PositionAtCenter);
}

void FormSatellites::TakeSelection() {
    if (form_.Busy) return;
    model_.TakeSelection(list_->selectionModel()->selection());
    satellite_manager::CountSelection(app_);
}

void FormSatellites::MakeWorking(const QModelIndex& row) {
    if (row.isValid()) ChangeWorkingSatellite(app_, model_.OrbitNumberOf(row.row()));
}

bool FormSatellites::eventFilter(QObject* watched, QEvent* event) {
    if (watched == list_ && event->type() == QEvent::KeyPress) {
        const int key = static_cast<QKeyEvent*>(event)->key();
        if (key == Qt::Key_Return || key == Qt::Key_Enter) {
            // Not to the form's default button, which would apply the filter.
            MakeWorking(list_->currentIndex());
            return true;
        }
    }
    if (watched == list_->viewport() && event->type() == QEvent::MouseButtonPress)
        beforePress_ = list_->selectionModel()->selection();
    return QDialog::eventFilter(watched, event);
}

void FormSatellites::showEvent(QShowEvent* event) {
    if (!event->spontaneous()) {
        form_.Visible = true;
        satellite_manager::UpDateAll(app_);
        ShowCurrent();
        list_->setFocus();
    }
    QDialog::showEvent(event);
}

void FormSatellites::hideEvent(QHideEvent* event) {
    if (!event->spontaneous()) satellite_manager::AutoClose(app_);
    QDialog::hideEvent(event);
}

}  // namespace glintara::desktop
