#include "desktop/orbit/form_download_tle.h"

#include <QCheckBox>
#include <QGridLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QProgressBar>
#include <QRadioButton>
#include <QVBoxLayout>
#include <set>
#include <utility>

#include "desktop/main/bindings.h"
#include "desktop/main/form_parts.h"
#include "desktop/main/style.h"

namespace glintara::desktop {

namespace {

constexpr int kListPixels = 12;
constexpr QSize kFirstSize(620, 618);

template <class Widget>
Widget* MakeBox(CheckBox& control, const char* name) {
    auto* box = new Widget;
    box->setObjectName(name);
    Bind(*box, control);
    return box;
}

/// A list that has no current line until the user gives it one: Qt's own takes the first with the focus.
class SourceList : public QListView {
  protected:
    void focusInEvent(QFocusEvent* event) override {
        QAbstractScrollArea::focusInEvent(event);
        viewport()->update();
    }
};

/// Room for a line of text while there is none.
void KeepLine(QLabel& label) { label.setMinimumHeight(label.fontMetrics().lineSpacing()); }

}  // namespace

FormDownloadTLE::FormDownloadTLE(Application& app, Downloads& downloads, QWidget* parent)
    : QDialog(parent), app_(app), form_(app.Download), downloads_(downloads) {
    setObjectName("FormDownloadTLE");
    setWindowTitle("Download TLE From Internet");
    auto* column = new QVBoxLayout(this);
    column->setSpacing(kFrameGap);
    QLabel* const caption = MakeLabel(form_.LSources, "LSources");
    column->addWidget(caption);
    column->addWidget(BuildList(), 1);
    caption->setBuddy(list_);
    auto* row = new QHBoxLayout;
    row->setSpacing(kFrameGap);
    row->addWidget(BuildStrategy(), 1);
    row->addLayout(BuildButtons());
    column->addLayout(row);
    column->addLayout(BuildProgress());
    auto* last = new QHBoxLayout;
    last->setSpacing(kFrameGap);
    QLabel* const origin = MakeLabel(form_.LOrigin, "LOrigin");
    origin->setProperty("quiet", true);
    origin->setWordWrap(true);
    last->addWidget(origin, 1);
    QPushButton* const leave = MakeButton(form_.CExit, "CExit");
    // The focus comes here when a download begins: a Return that is held down must not end it again.
    leave->setAutoDefault(false);
    last->addWidget(leave, 0, Qt::AlignBottom);
    column->addLayout(last);
    resize(kFirstSize);

    form_.LSiteTLE.Lines.SetWatcher([this] { ShowLines(); });
    form_.LSiteTLE.Current.SetWatcher([this] { ShowList(); });
    form_.LSiteTLE.Selected.SetWatcher([this] { ShowList(); });
    form_.Running.SetWatcher([this] { ShowRunning(); });
    ShowLines();
}

FormDownloadTLE::~FormDownloadTLE() {
    form_.LSiteTLE.Watch({});
    form_.Running.SetWatcher({});
    // Before the rows that it shows.
    delete list_;
}

QListView* FormDownloadTLE::BuildList() {
    list_ = new SourceList;
    list_->setObjectName("LSiteTLE");
    list_->installEventFilter(this);
    list_->setModel(&model_);
    list_->setSelectionMode(QAbstractItemView::ExtendedSelection);
    list_->setEditTriggers(QAbstractItemView::NoEditTriggers);
    list_->setFont(NumberFont(kListPixels));
    list_->setUniformItemSizes(true);
    list_->setAccessibleName(ToQt(form_.LSources.Caption));
    list_->setToolTip(ToQt(form_.LSources.ToolTip));
    const auto moved = [this] {
        if (busy_) return;
        TakeSelection();
        downloads_.UpdateButtons();
    };
    connect(list_->selectionModel(), &QItemSelectionModel::selectionChanged, this, moved);
    connect(list_->selectionModel(), &QItemSelectionModel::currentChanged, this, moved);
    // A click that changes nothing counts as well.
    connect(list_, &QListView::clicked, this, moved);
    return list_;
}

QWidget* FormDownloadTLE::BuildStrategy() {
    QGroupBox* const frame = MakeFrame(form_.Frame1, "Frame1");
    auto* grid = new QGridLayout(frame);
    grid->setContentsMargins(kFrameMargin, kFrameMargin, kFrameMargin, kFrameMargin);
    grid->setVerticalSpacing(kControlGap);
    grid->addWidget(MakeBox<QRadioButton>(form_.OUpdateAlways[0], "OUpdateAlways0"), 0, 0, 1, 2);
    grid->addWidget(MakeBox<QRadioButton>(form_.OUpdateAlways[kOnlyMoreRecent], "OUpdateAlways1"), 1, 0, 1, 2);
    grid->addWidget(MakeBox<QCheckBox>(form_.COnlySel, "COnlySel"), 2, 0);
    QPushButton* const satellites = MakeButton(form_.CSelSat, "CSelSat");
    satellites->setAutoDefault(false);
    grid->addWidget(satellites, 2, 1, Qt::AlignRight);
    grid->setColumnStretch(0, 1);
    return frame;
}

QLayout* FormDownloadTLE::BuildButtons() {
    auto* column = new QVBoxLayout;
    column->setSpacing(kControlGap);
    column->addStretch(1);
    QPushButton* const add = MakeButton(form_.CDownAdd, "CDownAdd");
    QPushButton* const both = MakeButton(form_.CDownUp, "CDownUp");
    QPushButton* const update = MakeButton(form_.CDownOUP, "CDownOUP");
    both->setDefault(true);
    for (QPushButton* button : {add, both, update}) {
        button->installEventFilter(this);
        column->addWidget(button);
    }
    return column;
}

QLayout* FormDownloadTLE::BuildProgress() {
    auto* column = new QVBoxLayout;
    column->setSpacing(kControlGap);
    QLabel* const status = MakeLabel(form_.LProg, "LProg");
    status->setProperty("accent", true);
    status->setWordWrap(true);
    status->setAccessibleName("Progress");
    KeepLine(*status);
    column->addWidget(status);
    QLabel* const total = MakeLabel(form_.LTotal, "LTotal");
    total->setProperty("quiet", true);
    KeepLine(*total);
    column->addWidget(total);
    auto* bar = new QProgressBar;
    bar->setObjectName("PB1");
    Bind(*bar, form_.PB1);
    bar->setTextVisible(false);
    bar->setAccessibleName("Progress of the download");
    column->addWidget(bar);
    return column;
}

void FormDownloadTLE::ShowLines() {
    busy_ = true;
    QStringList lines;
    for (const std::string& line : form_.LSiteTLE.Lines.Get()) lines << ToQt(line);
    if (lines != model_.stringList()) model_.setStringList(lines);
    busy_ = false;
    ShowList();
}

void FormDownloadTLE::ShowList() {
    if (busy_) return;
    busy_ = true;
    QItemSelection selection;
    for (const int line : form_.LSiteTLE.Selected.Get()) selection.select(model_.index(line), model_.index(line));
    list_->selectionModel()->select(selection, QItemSelectionModel::ClearAndSelect);
    const QModelIndex current = model_.index(form_.LSiteTLE.Current);
    if (current != list_->currentIndex()) {
        list_->selectionModel()->setCurrentIndex(current, QItemSelectionModel::NoUpdate);
        if (current.isValid()) list_->scrollTo(current);
    }
    busy_ = false;
}

/// `Running` is set before the buttons are disabled, and cleared after they are enabled again.
void FormDownloadTLE::ShowRunning() {
    if (form_.Running) focusBefore_ = focusWidget();
    list_->setEnabled(!form_.Running);
    if (!form_.Running && focusBefore_ != nullptr) focusBefore_->setFocus();
}

bool FormDownloadTLE::eventFilter(QObject* watched, QEvent* event) {
    if (event->type() == QEvent::KeyPress) {
        const auto& key = static_cast<QKeyEvent&>(*event);
        // Held down over the end of a short download, it would begin the next.
        if (key.isAutoRepeat() && (key.key() == Qt::Key_Return || key.key() == Qt::Key_Enter)) return true;
    }
    return QDialog::eventFilter(watched, event);
}

void FormDownloadTLE::TakeSelection() {
    std::set<int> selected;
    for (const QModelIndex& row : list_->selectionModel()->selectedRows()) selected.insert(row.row());
    const QModelIndex current = list_->currentIndex();
    busy_ = true;
    form_.LSiteTLE.Current = current.isValid() ? current.row() : kNoLine;
    form_.LSiteTLE.Selected = std::move(selected);
    busy_ = false;
}

void FormDownloadTLE::showEvent(QShowEvent* event) {
    if (!event->spontaneous()) {
        form_.Visible = true;
        list_->setFocus();
    }
    QDialog::showEvent(event);
}

void FormDownloadTLE::hideEvent(QHideEvent* event) {
    if (!event->spontaneous()) form_.Visible = false;
    QDialog::hideEvent(event);
}

}  // namespace glintara::desktop
