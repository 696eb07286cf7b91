#include "desktop/flare/form_mirror.h"

#include <QCheckBox>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QPushButton>
#include <QRadioButton>
#include <QStackedWidget>
#include <QStyle>
#include <QTabWidget>
#include <QVBoxLayout>
#include <array>
#include <initializer_list>

#include "desktop/main/bindings.h"
#include "desktop/main/form_parts.h"
#include "desktop/main/style.h"
#include "flare/surface_editor.h"

namespace glintara::desktop {

namespace {

constexpr int kNumberPixels = 12;
constexpr int kReadOutPixels = 11;
/// Characters for which a number has room.
constexpr int kNumberCharacters = 9;
/// Rows of the list for which there is room at least.
constexpr int kListRows = 4;

/// The orientations as they stand in the frame, row by row.
constexpr std::array<std::size_t, kOrientationOptions> kOrientationOrder{0, 1, 4, 2, 5, kNoOrientationOption};
constexpr int kOrientationColumns = 3;

/// A command that Return does not press from a field.
QPushButton* MakeCommand(Button& control, const char* name, Mnemonics& letters) {
    auto* button = new QPushButton;
    button->setObjectName(name);
    Bind(*button, control, letters.Take(ToQt(control.Caption)));
    button->setAutoDefault(false);
    return button;
}

QCheckBox* MakeCheckBox(CheckBox& control, const char* name, Mnemonics& letters) {
    auto* box = new QCheckBox;
    box->setObjectName(name);
    Bind(*box, control, letters.Take(ToQt(control.Caption)));
    return box;
}

/// A frame that is hidden with its control.
QGroupBox* MakeHidingFrame(Label& control, const char* name) {
    auto* frame = new QGroupBox;
    frame->setObjectName(name);
    const auto show = [frame, &control] {
        frame->setTitle(ToQt(control.Caption));
        if (frame->parentWidget() != nullptr || !control.Visible) frame->setVisible(control.Visible);
    };
    control.Watch(show);
    show();
    return frame;
}

QGridLayout* MakeGrid(QWidget& frame) {
    auto* grid = new QGridLayout(&frame);
    grid->setContentsMargins(kFrameMargin, kFrameMargin, kFrameMargin, kFrameMargin);
    grid->setVerticalSpacing(kControlGap);
    grid->setHorizontalSpacing(kFrameGap);
    return grid;
}

QHBoxLayout* MakeRow() {
    auto* row = new QHBoxLayout;
    row->setSpacing(kControlGap);
    return row;
}

/// A page of the tabs: frames one below the other.
QWidget* MakePage(std::initializer_list<QWidget*> frames) {
    auto* page = new QWidget;
    auto* column = new QVBoxLayout(page);
    column->setContentsMargins(0, kControlGap, 0, 0);
    column->setSpacing(kFrameGap);
    for (QWidget* frame : frames) column->addWidget(frame);
    column->addStretch(1);
    return page;
}

}  // namespace

FormMirror::FormMirror(Application& app, QWidget* parent) : QDialog(parent), app_(app), form_(app.Mirror) {
    setObjectName("FormMirror");
    setWindowTitle("Model Satellite Surfaces");
    auto* column = new QVBoxLayout(this);
    column->setSpacing(kFrameGap);

    auto* heading = new QLabel;
    heading->setObjectName("LSatRef");
    heading->setFont(NumberFont(kNumberPixels));
    heading->setProperty("accent", true);
    heading->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Fixed);
    Bind(*heading, form_.LSatRef);
    column->addWidget(heading);

    list_ = new QListWidget;
    list_->setObjectName("LMirrors");
    list_->setFont(NumberFont(kNumberPixels));
    list_->setAccessibleName("Surfaces");
    list_->setToolTip(
        "The surfaces of the satellite. A double click or Return goes to the moment that stands before the name.\n"
        "The boxes are for marks of your own.");
    const int row = list_->fontMetrics().height() + kControlGap;
    list_->setSpacing(1);
    list_->setMinimumHeight(kListRows * row + kFrameGap);
    list_->installEventFilter(this);
    column->addWidget(list_, 1);
    column->addLayout(BuildListButtons());
    column->addWidget(BuildOrientation());

    auto* tabs = new QTabWidget;
    tabs->setObjectName("Pages");
    QLayout* const buttons = BuildButtons();
    const auto captionOf = [this](const QString& words) { return WithMnemonic(words, letters_.Take(words)); };
    const QString mirror = captionOf("Mirror");
    const QString drawing = captionOf("Drawing and Selected Satellites");
    mirrorLetters_ = letters_;
    drawingLetters_ = letters_;
    tabs->addTab(BuildMirrorPage(), mirror);
    tabs->addTab(BuildDrawingPage(), drawing);
    column->addWidget(tabs);
    column->addLayout(buttons);

    connect(
        list_, &QListWidget::currentRowChanged, this,
        [this](int current) {
            if (busy_) return;
            form_.LMirrors.Current = current;
            // A choice that was refused is taken back, after the list has done with the press.
            QMetaObject::invokeMethod(
                this, [this] { ShowList(); }, Qt::QueuedConnection);
        });
    connect(
        list_, &QListWidget::itemDoubleClicked, this, [this] { form_.LMirrorsTwice.Click(); });
    form_.LMirrors.Watch([this] { ShowList(); });
    ShowList();
    ShowHint();
    Bind(timer_, form_.TimerUpdate);
}

FormMirror::~FormMirror() {
    form_.LMirrors.Watch({});
    form_.TimerUpdate.Watch({});
    for (Label* label : {&form_.LExtra1, &form_.FMirrorData}) label->Visible.SetHandler({});
}

QLabel* FormMirror::MakeLabel(Label& control, const char* name, QWidget* buddy, Mnemonics& letters) {
    auto* label = new QLabel;
    label->setObjectName(name);
    const QChar letter = buddy != nullptr ? letters.Take(ToQt(control.Caption)) : QChar();
    Bind(*label, control, [letter](const QString& text) { return WithMnemonic(text, letter); });
    if (buddy != nullptr) label->setBuddy(buddy);
    return label;
}

QLineEdit* FormMirror::MakeField(TextBox& box, const char* name, const Label& caption) {
    auto* field = new QLineEdit;
    field->setObjectName(name);
    Bind(*field, box);
    field->setAccessibleName(ToQt(caption.Caption));
    connect(field, &QLineEdit::editingFinished, this, [this] {
        if (form_.Visible && isVisible()) surface_editor::LeaveField(app_);
    });
    return field;
}

QLineEdit* FormMirror::MakeNumber(NumberBox& box, const char* name, const Label& caption) {
    QLineEdit* const field = MakeField(box, name, caption);
    field->setFont(NumberFont(kNumberPixels));
    field->setFixedWidth((kNumberCharacters + 2) * field->fontMetrics().horizontalAdvance('0'));
    const auto mark = [this, field, &box] {
        const bool bad = !surface_editor::IsReadable(app_, box);
        if (field->property("bad").toBool() == bad) return;
        field->setProperty("bad", bad);
        field->style()->unpolish(field);
        field->style()->polish(field);
    };
    connect(field, &QLineEdit::textChanged, field, mark);
    // What the program puts there comes without that signal, and is readable.
    box.Watch([field, &box, mark] {
        const QSignalBlocker quiet(field);
        const QString text = ToQt(box.Text);
        if (field->text() != text) field->setText(text);
        field->setEnabled(box.Enabled);
        field->setToolTip(ToQt(box.ToolTip));
        mark();
    });
    return field;
}

QSlider* FormMirror::MakeSlider(Slider& control, const char* name, const Label& caption) {
    constexpr int kTenDegrees = 100;
    auto* slider = new QSlider(Qt::Horizontal);
    slider->setObjectName(name);
    Bind(*slider, control);
    slider->setPageStep(kTenDegrees);
    slider->setAccessibleName(ToQt(caption.Caption));
    return slider;
}

QLayout* FormMirror::BuildListButtons() {
    QHBoxLayout* const row = MakeRow();
    row->addWidget(MakeCommand(form_.CAddMirror, "CAddMirror", letters_));
    row->addWidget(MakeCommand(form_.CDeleteMirror, "CDeleteMirror", letters_));
    row->addWidget(MakeCommand(form_.CMoveUp, "CMoveUp", letters_));
    row->addStretch(1);
    row->addWidget(MakeCommand(form_.CClearAllMirrors, "CClearAllMirrors", letters_));
    return row;
}

QWidget* FormMirror::BuildOrientation() {
    QGroupBox* const frame = MakeHidingFrame(form_.FOrient, "FOrient");
    QGridLayout* const grid = MakeGrid(*frame);
    int place = 0;
    for (const std::size_t i : kOrientationOrder) {
        const bool undefined = i == kNoOrientationOption;
        OptionButton& control = undefined ? form_.OUndefined : form_.OOrient[i];
        auto* option = new QRadioButton;
        option->setObjectName(undefined ? QString("OUndefined") : QString("OOrient_%1").arg(i));
        // Who clears the others is the editor; a type that is none leaves them all clear.
        option->setAutoExclusive(false);
        Bind(*option, control, letters_.Take(ToQt(control.Caption)));
        grid->addWidget(option, place / kOrientationColumns, place % kOrientationColumns);
        ++place;
    }
    const int below = place / kOrientationColumns;
    grid->addLayout(BuildAxis(), below, 0, 1, kOrientationColumns);
    grid->addWidget(BuildTargetOrRotation(), below + 1, 0, 1, kOrientationColumns);
    return frame;
}

QLayout* FormMirror::BuildAxis() {
    QHBoxLayout* const row = MakeRow();
    QLineEdit* const ra = MakeNumber(form_.TRotAxisRA, "TRotAxisRA", form_.LRotAxisRA);
    QLineEdit* const dec = MakeNumber(form_.TRotAxisDEC, "TRotAxisDEC", form_.LRotAxisDEC);
    row->addWidget(MakeLabel(form_.LRotAxisRA, "LRotAxisRA", ra, letters_));
    row->addWidget(ra);
    row->addSpacing(kFrameGap);
    row->addStretch(1);
    row->addWidget(MakeLabel(form_.LRotAxisDEC, "LRotAxisDEC", dec, letters_));
    row->addWidget(dec);
    return row;
}

/// The target, or the command of rotating bodies: no orientation has both.
QWidget* FormMirror::BuildTargetOrRotation() {
    auto* pages = new QStackedWidget;
    auto* rotation = new QWidget;
    auto* rotationRow = new QHBoxLayout(rotation);
    rotationRow->setContentsMargins(0, 0, 0, 0);
    rotationRow->addStretch(1);
    rotationRow->addWidget(MakeCommand(form_.CRotation, "CRotation", letters_));
    pages->addWidget(rotation);

    auto* target = new QWidget;
    auto* targetRow = new QHBoxLayout(target);
    targetRow->setContentsMargins(0, 0, 0, 0);
    targetRow->setSpacing(kControlGap);
    QLineEdit* const number = MakeNumber(form_.TExtra1, "TExtra1", form_.LExtra1);
    targetRow->addWidget(MakeLabel(form_.LExtra1, "LExtra1", number, letters_));
    targetRow->addWidget(number);
    targetRow->addSpacing(kFrameGap);
    QLabel* const name = MakeLabel(form_.LExtraInfo1, "LExtraInfo1", nullptr, letters_);
    name->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Preferred);
    targetRow->addWidget(name, 1);
    pages->addWidget(target);

    const auto choose = [pages, target, rotation, this] {
        pages->setCurrentWidget(form_.LExtra1.Visible ? target : rotation);
    };
    form_.LExtra1.Visible.SetHandler(choose);
    choose();
    return pages;
}

QWidget* FormMirror::BuildMirrorPage() {
    hint_ = new QLabel("The surfaces of this satellite are not defined. Choose an orientation.");
    hint_->setObjectName("LHint");
    hint_->setProperty("quiet", true);
    hint_->setContentsMargins(kFrameMargin, kFrameMargin, 0, 0);
    form_.FMirrorData.Visible.SetHandler([this] { ShowHint(); });
    return MakePage({hint_, BuildMirrorData(), BuildTrimming()});
}

QWidget* FormMirror::BuildMirrorData() {
    QGroupBox* const frame = MakeHidingFrame(form_.FMirrorData, "FMirrorData");
    QGridLayout* const grid = MakeGrid(*frame);
    QLineEdit* const name = MakeField(form_.TName, "TName", form_.LName);
    QLineEdit* const id = MakeField(form_.TMID, "TMID", form_.LMID);
    id->setReadOnly(true);
    id->setFocusPolicy(Qt::ClickFocus);
    QLineEdit* const scatter = MakeNumber(form_.TMagnify, "TMagnify", form_.LMagnify);
    grid->addWidget(MakeLabel(form_.LName, "LName", name, mirrorLetters_), 0, 0);
    grid->addWidget(name, 0, 1);
    grid->addWidget(MakeLabel(form_.LMID, "LMID", nullptr, mirrorLetters_), 0, 2);
    grid->addWidget(id, 0, 3);
    grid->addWidget(MakeLabel(form_.LMagnify, "LMagnify", scatter, mirrorLetters_), 1, 0);
    grid->addWidget(scatter, 1, 1, Qt::AlignLeft);
    grid->addWidget(MakeCommand(form_.CUpTime, "CUpTime", mirrorLetters_), 1, 3, Qt::AlignRight);
    return frame;
}

QWidget* FormMirror::BuildTrimming() {
    QGroupBox* const frame = MakeHidingFrame(form_.FMirror, "FMirror");
    QGridLayout* const grid = MakeGrid(*frame);
    const auto addAngle = [&](int row, Label& caption, const char* label, NumberBox& box, const char* field,
                              Slider& slider, const char* bar) {
        QLineEdit* const number = MakeNumber(box, field, caption);
        grid->addWidget(MakeLabel(caption, label, number, mirrorLetters_), row, 0);
        grid->addWidget(number, row, 1);
        grid->addWidget(MakeSlider(slider, bar, caption), row, 2);
    };
    addAngle(0, form_.LAngle, "LAngle", form_.TAngle, "TAngle", form_.SAngle, "SAngle");
    addAngle(1, form_.LTilt, "LTilt", form_.TTilt, "TTilt", form_.STilt, "STilt");
    QHBoxLayout* const fits = MakeRow();
    fits->addWidget(MakeCommand(form_.CFlareSet, "CFlareSet", mirrorLetters_));
    fits->addWidget(MakeCommand(form_.CBeamSet, "CBeamSet", mirrorLetters_));
    fits->addStretch(1);
    grid->addLayout(fits, 2, 0, 1, 3);
    QLabel* const info = MakeLabel(form_.LFitInfo, "LFitInfo", nullptr, mirrorLetters_);
    info->setProperty("warning", true);
    info->setMinimumHeight(info->fontMetrics().height() + 1);
    grid->addWidget(info, 3, 0, 1, 3);
    return frame;
}

QWidget* FormMirror::BuildDrawingPage() { return MakePage({BuildDrawing(), BuildSelected()}); }

QWidget* FormMirror::BuildDrawing() {
    QGroupBox* const frame = MakeHidingFrame(form_.FrameDesignDraw, "FrameDesignDraw");
    QGridLayout* const grid = MakeGrid(*frame);
    QHBoxLayout* const turn = MakeRow();
    QSlider* const slider = MakeSlider(form_.SRotTeta, "SRotTeta", form_.LRotTeta);
    turn->addWidget(MakeCheckBox(form_.CRotAng, "CRotAng", drawingLetters_));
    turn->addWidget(MakeLabel(form_.LRotTeta, "LRotTeta", slider, drawingLetters_));
    turn->addWidget(slider, 1);
    grid->addLayout(turn, 0, 0);
    QHBoxLayout* const options = MakeRow();
    options->addWidget(MakeCheckBox(form_.CShowSourceRay, "CShowSourceRay", drawingLetters_));
    options->addStretch(1);
    options->addWidget(MakeCheckBox(form_.CShowRotAxis, "CShowRotAxis", drawingLetters_));
    options->addStretch(1);
    options->addWidget(MakeCheckBox(form_.CShowMirrorNormal, "CShowMirrorNormal", drawingLetters_));
    options->addStretch(1);
    options->addWidget(MakeCheckBox(form_.CForceIllumination, "CForceIllumination", drawingLetters_));
    grid->addLayout(options, 1, 0);
    grid->addLayout(BuildReadOut(), 2, 0);
    return frame;
}

QLayout* FormMirror::BuildReadOut() {
    constexpr int kColumns = 3;
    auto* grid = new QGridLayout;
    grid->setVerticalSpacing(kControlGap);
    grid->setHorizontalSpacing(kFrameGap);
    int place = 0;
    const auto add = [&](Label& control, const char* name) {
        QLabel* const label = MakeLabel(control, name, nullptr, drawingLetters_);
        label->setFont(NumberFont(kReadOutPixels));
        // Room for the longest number, so that nothing moves when it comes.
        constexpr auto kLongest = "-179.99";
        label->setMinimumWidth(label->sizeHint().width() + label->fontMetrics().horizontalAdvance(kLongest));
        grid->addWidget(label, place / kColumns, place % kColumns);
        ++place;
    };
    add(form_.LRotAngle, "LRotAngle");
    add(form_.LRotTilt, "LRotTilt");
    add(form_.LRotRMA, "LRotRMA");
    add(form_.LRotRA, "LRotRA");
    add(form_.LRotDEC, "LRotDEC");
    return grid;
}

QWidget* FormMirror::BuildSelected() {
    QGroupBox* const frame = MakeHidingFrame(form_.FSelected, "FSelected");
    QGridLayout* const grid = MakeGrid(*frame);
    grid->addWidget(MakeCommand(form_.CCopyModel, "CCopyModel", drawingLetters_), 0, 0);
    grid->addWidget(MakeCommand(form_.CSynchMirror, "CSynchMirror", drawingLetters_), 1, 0);
    grid->addWidget(MakeCommand(form_.CSelectWin, "CSelectWin", drawingLetters_), 0, 2);
    grid->setColumnStretch(1, 1);
    return frame;
}

QLayout* FormMirror::BuildButtons() {
    QHBoxLayout* const row = MakeRow();
    row->addWidget(MakeCommand(form_.CExportModel, "CExportModel", letters_));
    row->addStretch(1);
    row->addWidget(MakeCommand(form_.COk, "COk", letters_));
    row->addWidget(MakeCommand(form_.CCancel, "CCancel", letters_));
    QPushButton* const apply = MakeCommand(form_.CApply, "CApply", letters_);
    apply->setDefault(true);
    row->addWidget(apply);
    return row;
}

void FormMirror::ShowList() {
    if (busy_) return;
    busy_ = true;
    const std::vector<std::string>& lines = form_.LMirrors.Lines;
    const int count = form_.LMirrors.Count();
    while (list_->count() > count) delete list_->takeItem(list_->count() - 1);
    while (list_->count() < count) {
        auto* item = new QListWidgetItem(list_);
        item->setFlags(item->flags() | Qt::ItemIsUserCheckable);
        item->setCheckState(Qt::Unchecked);
    }
    for (int i = 0; i < count; ++i) list_->item(i)->setText(ToQt(lines[static_cast<std::size_t>(i)]));
    list_->setCurrentRow(form_.LMirrors.Current < count ? form_.LMirrors.Current : kNoLine);
    busy_ = false;
}

void FormMirror::ShowHint() { hint_->setVisible(!form_.FMirrorData.Visible); }

bool FormMirror::eventFilter(QObject* watched, QEvent* event) {
    if (watched == list_ && event->type() == QEvent::KeyPress) {
        const int key = static_cast<QKeyEvent*>(event)->key();
        if (key == Qt::Key_Return || key == Qt::Key_Enter) {
            form_.LMirrorsTwice.Click();
            return true;
        }
        if (key == Qt::Key_Delete) {
            form_.CDeleteMirror.Click();
            return true;
        }
        if (key == Qt::Key_Insert) {
            form_.CAddMirror.Click();
            return true;
        }
    }
    return QDialog::eventFilter(watched, event);
}

void FormMirror::reject() {
    // Told first: a field that loses the keyboard with the window is not one that was left.
    surface_editor::CloseWindow(app_);
    QDialog::reject();
}

void FormMirror::hideEvent(QHideEvent* event) {
    if (!event->spontaneous()) surface_editor::CloseWindow(app_);
    QDialog::hideEvent(event);
}

}  // namespace glintara::desktop
