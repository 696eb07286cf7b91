#include "desktop/orbit/form_observations.h"

#include <QCheckBox>
#include <QClipboard>
#include <QFileDialog>
#include <QFileInfo>
#include <QGridLayout>
#include <QGroupBox>
#include <QGuiApplication>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QPushButton>
#include <QRadioButton>
#include <QStyle>
#include <QStyledItemDelegate>
#include <QVBoxLayout>
#include <algorithm>
#include <iterator>
#include <set>

#include "desktop/main/bindings.h"
#include "desktop/main/form_parts.h"
#include "desktop/main/style.h"
#include "engine/astro/number_text.h"
#include "orbit/observations.h"
#include "orbit/satellite_table.h"

namespace glintara::desktop {

namespace {

constexpr int kListPixels = 12;
constexpr int kFieldCharacters = 6;
/// Characters of a line for which the list has room: the columns, and brightness and period behind them.
constexpr int kListCharacters = 82;
constexpr int kFirstHeight = 520;
/// Ground of a list before its text, pixels, so that the columns' names stand above the columns.
constexpr int kTextInset = 8;

/// What stands in the columns of a line.
constexpr auto kColumns = "RRRRR YY NNNAAA SSSS C YYYYMMDDHHMMSSsss MX AE HHMMmmm+DDdddd MX";

constexpr auto kFolder = "FormIOD/folder";
constexpr auto kFileKinds = "IOD Files (*.iod);;Text Files (*.txt);;All Files (*)";
constexpr auto kFirstFileName = "observations.iod";

/// Edits a line where it stands: without a frame that would move the columns.
class LineDelegate : public QStyledItemDelegate {
  public:
    using QStyledItemDelegate::QStyledItemDelegate;

    QWidget* createEditor(QWidget* parent, const QStyleOptionViewItem& option,
                          const QModelIndex& index) const override {
        QWidget* const editor = QStyledItemDelegate::createEditor(parent, option, index);
        editor->setStyleSheet("border: none; border-radius: 0; padding: 0 1px;");
        return editor;
    }
};

/// The rows of `lines`, one range a run of neighbours: there may be thousands.
QItemSelection SelectionOf(const QAbstractItemModel& model, const std::set<int>& lines) {
    QItemSelection selection;
    for (auto first = lines.begin(); first != lines.end() && *first < model.rowCount();) {
        auto last = first;
        auto next = std::next(first);
        while (next != lines.end() && *next == *last + 1 && *next < model.rowCount()) last = next++;
        selection.append(QItemSelectionRange(model.index(*first, 0), model.index(*last, 0)));
        first = next;
    }
    return selection;
}

/// A command that Return does not press from a field.
QPushButton* MakeCommand(Button& control, const char* name) {
    QPushButton* const button = MakeButton(control, name);
    button->setAutoDefault(false);
    return button;
}

bool IsWholeNumber(const std::string& text) {
    return std::all_of(
        text.begin(), text.end(), [](char c) { return c >= '0' && c <= '9'; });
}

bool IsSatelliteNumber(const std::string& text) {
    return IsWholeNumber(text) || SatelliteNumberText(SatelliteNumberValue(text)) == text;
}

/// Text that is not usable is marked as soon as it stands there.
void MarkBadText(QLineEdit& field, TextBox& box, bool (*isUsable)(const std::string&)) {
    const auto mark = [&field, isUsable] {
        const bool bad = !isUsable(FromQt(field.text()));
        if (field.property("bad").toBool() == bad) return;
        field.setProperty("bad", bad);
        field.style()->unpolish(&field);
        field.style()->polish(&field);
    };
    QObject::connect(&field, &QLineEdit::textChanged, &field, mark);
    box.Text.SetHandler(mark);
}

}  // namespace

FormObservations::FormObservations(Application& app, QSettings& store, QWidget* parent)
    : QDialog(parent), app_(app), form_(app.Observations), store_(store), model_(app) {
    setObjectName("FormIOD");
    setWindowTitle("Observations");
    auto* column = new QVBoxLayout(this);
    column->setSpacing(kFrameGap);
    auto* top = new QHBoxLayout;
    top->setSpacing(kFrameGap);
    top->addWidget(BuildObject());
    top->addWidget(BuildConditions());
    top->addLayout(BuildCommands(), 1);
    column->addLayout(top);
    column->addLayout(BuildList(), 1);
    column->addLayout(BuildEntry());
    column->addLayout(BuildButtons());
    ConnectFiles();
    resize(sizeHint().width(), kFirstHeight);
    ShowList();
}

FormObservations::~FormObservations() {
    form_.LIOD.Watch({});
    for (TextBox* box : {&form_.TSatNumber, &form_.TLaunchYear, &form_.TLaunchNumber}) box->Text.SetHandler({});
    for (Button* button : {&form_.CCopyIOD, &form_.CPasteIOD, &form_.CLoadIOD, &form_.CSaveIOD})
        button->SetClickHandler({});
    // Before the rows that it shows.
    delete list_;
}

QWidget* FormObservations::BuildObject() {
    QGroupBox* const frame = MakeFrame(form_.FrameObject, "FrameObject");
    auto* grid = new QGridLayout(frame);
    grid->setContentsMargins(kFrameMargin, kFrameMargin, kFrameMargin, kFrameMargin);
    grid->setVerticalSpacing(kControlGap);
    grid->setHorizontalSpacing(kFrameGap);
    auto* fromSatellite = new QCheckBox;
    fromSatellite->setObjectName("COInfo");
    Bind(*fromSatellite, form_.COInfo);
    grid->addWidget(fromSatellite, 0, 0, 1, 4);
    const auto addField = [&](int row, int place, Label& caption, const char* labelName, TextBox& box,
                              const char* name) -> QLineEdit& {
        QLabel* const label = MakeLabel(caption, labelName);
        auto* field = new QLineEdit;
        field->setObjectName(name);
        Bind(*field, box);
        field->setFont(NumberFont(kListPixels));
        field->setFixedWidth((kFieldCharacters + 2) * field->fontMetrics().horizontalAdvance('0'));
        field->setAccessibleName(ToQt(caption.Caption));
        label->setBuddy(field);
        grid->addWidget(label, row, place);
        grid->addWidget(field, row, place + 1);
        return *field;
    };
    MarkBadText(addField(1, 0, form_.LSatNumber, "LSatNumber", form_.TSatNumber, "TSatNumber"), form_.TSatNumber,
                IsSatelliteNumber);
    MarkBadText(addField(2, 0, form_.LLaunchYear, "LLaunchYear", form_.TLaunchYear, "TLaunchYear"), form_.TLaunchYear,
                IsWholeNumber);
    MarkBadText(addField(1, 2, form_.LLaunchNumber, "LLaunchNumber", form_.TLaunchNumber, "TLaunchNumber"),
                form_.TLaunchNumber, IsWholeNumber);
    addField(2, 2, form_.LLaunchSuffix, "LLaunchSuffix", form_.TLaunchSuffix, "TLaunchSuffix");
    return frame;
}

QWidget* FormObservations::BuildConditions() {
    constexpr int kRows = 3;
    QGroupBox* const frame = MakeFrame(form_.FObs1, "FObs1");
    auto* grid = new QGridLayout(frame);
    grid->setContentsMargins(kFrameMargin, kFrameMargin, kFrameMargin, kFrameMargin);
    grid->setVerticalSpacing(kControlGap);
    grid->setHorizontalSpacing(kFrameMargin);
    for (int i = 0; i < static_cast<int>(form_.Option1.size()); ++i) {
        auto* option = new QRadioButton;
        option->setObjectName(QString("Option1_%1").arg(i));
        // Who clears the others is the control; one that a line does not know may leave them all clear.
        option->setAutoExclusive(false);
        Bind(*option, form_.Option1[static_cast<std::size_t>(i)]);
        grid->addWidget(option, i % kRows, i / kRows);
    }
    return frame;
}

QLayout* FormObservations::BuildCommands() {
    auto* column = new QVBoxLayout;
    column->setSpacing(kControlGap);
    column->addStretch(1);
    QPushButton* const apply = MakeCommand(form_.CApply, "CApply");
    apply->setDefault(true);
    column->addWidget(apply);
    QPushButton* const pointer = MakeCommand(form_.CEnDisPointer, "CEnDisPointer");
    pointer->setEnabled(form_.CEnDisPointer.Enabled && form_.CEnDisPointer.IsWired());
    column->addWidget(pointer);
    return column;
}

QLayout* FormObservations::BuildList() {
    auto* column = new QVBoxLayout;
    column->setSpacing(kControlGap);
    QLabel* const caption = MakeLabel(form_.LIODCaption, "LIODCaption");
    caption->setProperty("quiet", true);
    column->addWidget(caption);
    auto* columns = new QLabel(kColumns);
    columns->setObjectName("LColumns");
    columns->setFont(NumberFont(kListPixels));
    columns->setProperty("quiet", true);
    columns->setContentsMargins(kTextInset, 0, 0, 0);
    columns->setToolTip(
        "Catalogue number, launch, station, conditions, date and time (UTC) with accuracy in seconds,\n"
        "right ascension and declination (J2000) with accuracy in degrees. An accuracy is M times ten to the power of "
        "X - 8.");
    column->addWidget(columns);

    list_ = new QListView;
    list_->setObjectName("LIOD");
    list_->setModel(&model_);
    list_->setItemDelegate(new LineDelegate(list_));
    list_->setFont(NumberFont(kListPixels));
    list_->setSelectionMode(QAbstractItemView::ExtendedSelection);
    list_->setEditTriggers(QAbstractItemView::DoubleClicked | QAbstractItemView::EditKeyPressed);
    list_->setUniformItemSizes(true);
    list_->setMinimumWidth(kListCharacters * list_->fontMetrics().horizontalAdvance('0') + 2 * kTextInset);
    list_->setAccessibleName(ToQt(form_.LIODCaption.Caption));
    list_->setToolTip("A double click or Return edits a line in its place");
    list_->installEventFilter(this);
    caption->setBuddy(list_);
    column->addWidget(list_, 1);
    connect(
        list_->selectionModel(), &QItemSelectionModel::selectionChanged, this, [this] { TakeSelection(); });
    connect(
        list_->selectionModel(), &QItemSelectionModel::currentChanged, this,
        [this](const QModelIndex& current) {
            if (!busy_) form_.LIOD.Current = current.isValid() ? current.row() : kNoLine;
        });
    form_.LIOD.Watch([this] { ShowList(); });
    return column;
}

QLayout* FormObservations::BuildEntry() {
    auto* row = new QHBoxLayout;
    row->setSpacing(kControlGap);
    entry_ = new QLineEdit;
    entry_->setObjectName("TIODLine");
    entry_->setFont(NumberFont(kListPixels));
    entry_->setPlaceholderText("Type a line of the columns above");
    entry_->setAccessibleName("New line");
    Bind(*entry_, form_.TIODLine);
    entry_->installEventFilter(this);
    row->addWidget(entry_, 1);
    row->addWidget(MakeCommand(form_.CAddLine, "CAddLine"));
    return row;
}

QLayout* FormObservations::BuildButtons() {
    auto* row = new QHBoxLayout;
    row->setSpacing(kControlGap);
    row->addWidget(MakeCommand(form_.CCopyIOD, "CCopyIOD"));
    row->addWidget(MakeCommand(form_.CPasteIOD, "CPasteIOD"));
    row->addWidget(MakeCommand(form_.CDeleteIOD, "CDeleteIOD"));
    row->addSpacing(kFrameGap);
    row->addWidget(MakeCommand(form_.CLoadIOD, "CLoadIOD"));
    row->addWidget(MakeCommand(form_.CSaveIOD, "CSaveIOD"));
    row->addWidget(MakeCommand(form_.CExport, "CExport"));
    row->addSpacing(kFrameGap);
    row->addWidget(MakeCommand(form_.CClearAllIOD, "CClearAllIOD"));
    row->addStretch(1);
    row->addWidget(MakeCommand(form_.CClose, "CClose"));
    return row;
}

void FormObservations::ConnectFiles() {
    form_.CCopyIOD.SetClickHandler(
        [this] { QGuiApplication::clipboard()->setText(ToQt(observations::SelectedLinesText(app_))); });
    form_.CPasteIOD.SetClickHandler(
        [this] { observations::EnterIODLines(app_, FromQt(QGuiApplication::clipboard()->text())); });
    form_.CLoadIOD.SetClickHandler([this] {
        const QString file = QFileDialog::getOpenFileName(this, "Load Observations", Folder(), kFileKinds);
        if (file.isEmpty()) return;
        KeepFolder(file);
        observations::LoadIODFile(app_, FromQt(file));
    });
    form_.CSaveIOD.SetClickHandler([this] {
        const QString file =
            QFileDialog::getSaveFileName(this, "Save Observations", Folder() + "/" + kFirstFileName, kFileKinds);
        if (file.isEmpty()) return;
        KeepFolder(file);
        observations::SaveIODFile(app_, FromQt(file));
    });
}

QString FormObservations::Folder() const { return store_.value(kFolder, QDir::homePath()).toString(); }

void FormObservations::KeepFolder(const QString& file) { store_.setValue(kFolder, QFileInfo(file).absolutePath()); }

void FormObservations::ShowList() {
    if (busy_) return;
    const ListBox& box = form_.LIOD;
    busy_ = true;
    model_.Renew();
    const QItemSelection selection = SelectionOf(model_, box.Selected);
    list_->selectionModel()->select(selection, QItemSelectionModel::ClearAndSelect);
    const QModelIndex current = model_.index(box.Current);
    if (current != list_->currentIndex()) {
        list_->selectionModel()->setCurrentIndex(current, QItemSelectionModel::NoUpdate);
        if (current.isValid()) list_->scrollTo(current);
    }
    busy_ = false;
}

void FormObservations::TakeSelection() {
    if (busy_) return;
    std::set<int> lines;
    for (const QModelIndex& row : list_->selectionModel()->selectedRows()) lines.insert(row.row());
    // The list shows it already, and its cursor is still on the way.
    busy_ = true;
    form_.LIOD.Selected = std::move(lines);
    busy_ = false;
}

bool FormObservations::ListKey(QKeyEvent& key) {
    if (key.matches(QKeySequence::Copy)) {
        form_.CCopyIOD.Click();
    } else if (key.matches(QKeySequence::Paste)) {
        form_.CPasteIOD.Click();
    } else if (key.matches(QKeySequence::Delete)) {
        form_.CDeleteIOD.Click();
    } else if (key.key() == Qt::Key_Return || key.key() == Qt::Key_Enter) {
        if (list_->currentIndex().isValid()) list_->edit(list_->currentIndex());
    } else {
        return false;
    }
    return true;
}

bool FormObservations::eventFilter(QObject* watched, QEvent* event) {
    if (event->type() == QEvent::KeyPress) {
        auto& key = static_cast<QKeyEvent&>(*event);
        // While a line is edited, what its field does not take comes here too.
        if (watched == list_ && list_->hasFocus() && ListKey(key)) return true;
        if (watched == entry_ && (key.key() == Qt::Key_Return || key.key() == Qt::Key_Enter)) {
            form_.CAddLine.Click();
            return true;
        }
    }
    return QDialog::eventFilter(watched, event);
}

void FormObservations::showEvent(QShowEvent* event) {
    if (!event->spontaneous()) {
        observations::RefreshInfo(app_);
        form_.Visible = true;
    }
    QDialog::showEvent(event);
}

void FormObservations::hideEvent(QHideEvent* event) {
    if (!event->spontaneous()) form_.Visible = false;
    QDialog::hideEvent(event);
}

}  // namespace glintara::desktop
