#include "desktop/orbit/form_adv_sel.h"

#include <QCheckBox>
#include <QHBoxLayout>
#include <QLineEdit>
#include <QRadioButton>
#include <QVBoxLayout>

#include "desktop/main/bindings.h"
#include "desktop/main/form_parts.h"
#include "desktop/main/style.h"
#include "engine/astro/number_text.h"
#include "flare/surface_models.h"
#include "orbit/advanced_selection.h"

namespace glintara::desktop {

namespace {

constexpr int kFieldWidth = 70;
constexpr int kInnerMargin = 6;
constexpr int kNumberPixels = 12;

/// As wide as the longest that can be wrong with a field: notes come and go, and nothing moves.
constexpr int kNoteWidth = 100;

QGridLayout* GridIn(QWidget& frame) {
    auto* grid = new QGridLayout(&frame);
    grid->setContentsMargins(kInnerMargin, kInnerMargin, kInnerMargin, kInnerMargin);
    grid->setHorizontalSpacing(kInnerMargin);
    grid->setVerticalSpacing(kControlGap);
    return grid;
}

template <class Widget>
Widget* MakeBox(CheckBox& control, const char* name) {
    auto* box = new Widget;
    box->setObjectName(name);
    Bind(*box, control);
    return box;
}

/// One of several: the program clears the others.
QRadioButton* MakeOption(OptionButton& control, const char* name) {
    auto* const option = MakeBox<QRadioButton>(control, name);
    option->setAutoExclusive(false);
    return option;
}

QLabel* MakeNote(Label& note, const QString& name) {
    auto* const label = new QLabel;
    label->setObjectName(name);
    Bind(*label, note);
    label->setProperty("warning", true);
    return label;
}

QLineEdit* MakeField(TextBox& box, const QString& name, const QString& accessibleName, Label& note) {
    auto* field = new QLineEdit;
    field->setObjectName(name);
    Bind(*field, box);
    field->setFont(NumberFont(kNumberPixels));
    field->setFixedWidth(kFieldWidth);
    field->setAlignment(Qt::AlignRight);
    field->setAccessibleName(accessibleName);
    MarkUnless(*field, [](const std::string& text) {
        return TrimmedText(text, " \t").empty() || StrictNumber(TrimmedText(text, " \t")).has_value();
    });
    // Who hears the window is told what stands beside the field.
    QObject::connect(field, &QLineEdit::textChanged, field,
                     [field, &note] { field->setAccessibleDescription(ToQt(note.Caption)); });
    return field;
}

}  // namespace

FormAdvSel::FormAdvSel(Application& app, QWidget* parent) : QDialog(parent), app_(app), form_(app.AdvSel) {
    setObjectName("FormAdvSel");
    setWindowTitle("Advanced Satellite Selection");
    auto* column = new QVBoxLayout(this);
    column->setSpacing(kFrameGap);
    auto* row = new QHBoxLayout;
    row->setSpacing(kFrameGap);
    auto* left = new QVBoxLayout;
    left->setSpacing(kFrameGap);
    left->addWidget(BuildOrbit());
    left->addWidget(BuildElements());
    left->addStretch(1);
    row->addLayout(left, 1);
    auto* right = new QVBoxLayout;
    right->setSpacing(kFrameGap);
    right->addWidget(BuildModel());
    right->addWidget(BuildSky());
    right->addStretch(1);
    row->addLayout(right);
    column->addLayout(row);
    column->addWidget(BuildHow());
    QLabel* const count = MakeLabel(form_.LCount, "LCount");
    count->setProperty("accent", true);
    count->setMinimumHeight(count->fontMetrics().lineSpacing());
    column->addWidget(count);
    column->addLayout(BuildButtons());
    Bind(timer_, form_.TimerCount);
}

FormAdvSel::~FormAdvSel() { form_.TimerCount.Watch({}); }

void FormAdvSel::AddRange(QGridLayout& grid, int row, RangeFields& fields, const char* name) {
    const QString caption = ToQt(fields.Caption.Caption);
    auto* label = MakeLabel(fields.Caption, name);
    grid.addWidget(label, row, 0);
    QLineEdit* const from = MakeField(fields.TFrom, QString("TFrom") + name, caption + ", from", fields.LNote);
    QLineEdit* const to = MakeField(fields.TTo, QString("TTo") + name, caption + ", to", fields.LNote);
    label->setBuddy(from);
    // The fields of both frames stand one below the other.
    grid.setColumnMinimumWidth(0, fontMetrics().horizontalAdvance(ToQt(form_.Perigee.Caption.Caption)) + kControlGap);
    grid.addWidget(from, row, 1);
    auto* between = new QLabel("to");
    between->setProperty("quiet", true);
    grid.addWidget(between, row, 2);
    grid.addWidget(to, row, 3);
    QLabel* const note = MakeNote(fields.LNote, QString("LNote") + name);
    note->setFixedWidth(kNoteWidth);
    grid.addWidget(note, row, 4);
    if (firstField_ == nullptr) firstField_ = from;
}

QWidget* FormAdvSel::BuildOrbit() {
    QGroupBox* const frame = MakeFrame(form_.FrameOrbit, "FrameOrbit");
    QGridLayout* const grid = GridIn(*frame);
    AddRange(*grid, 0, form_.Inclination, "Inclination");
    AddRange(*grid, 1, form_.Perigee, "Perigee");
    AddRange(*grid, 2, form_.Apogee, "Apogee");
    AddRange(*grid, 3, form_.Period, "Period");
    AddRange(*grid, 4, form_.Eccentricity, "Eccentricity");
    return frame;
}

QWidget* FormAdvSel::BuildElements() {
    QGroupBox* const frame = MakeFrame(form_.FrameElements, "FrameElements");
    QGridLayout* const grid = GridIn(*frame);
    AddRange(*grid, 0, form_.Age, "Age");
    return frame;
}

QWidget* FormAdvSel::BuildModel() {
    QGroupBox* const frame = MakeFrame(form_.FrameModel, "FrameModel");
    QGridLayout* const grid = GridIn(*frame);
    grid->addWidget(MakeOption(form_.OAnyModel, "OAnyModel"), 0, 0);
    grid->addWidget(MakeOption(form_.OWithModel, "OWithModel"), 1, 0);
    grid->addWidget(MakeOption(form_.OWithoutModel, "OWithoutModel"), 2, 0);
    return frame;
}

QWidget* FormAdvSel::BuildSky() {
    QGroupBox* const frame = MakeFrame(form_.FrameSky, "FrameSky");
    QGridLayout* const grid = GridIn(*frame);
    grid->addWidget(MakeBox<QCheckBox>(form_.CLit, "CLit"), 0, 0, 1, 2);
    grid->addWidget(MakeBox<QCheckBox>(form_.CAbove, "CAbove"), 1, 0, 1, 2);
    QLabel* const label = MakeLabel(form_.LMinElevation, "LMinElevation");
    QLineEdit* const field =
        MakeField(form_.TMinElevation, "TMinElevation", ToQt(form_.LMinElevation.Caption), form_.LElevationNote);
    label->setBuddy(field);
    grid->addWidget(label, 2, 0);
    grid->addWidget(field, 2, 1);
    QLabel* const note = MakeNote(form_.LElevationNote, "LElevationNote");
    note->setMinimumHeight(note->fontMetrics().lineSpacing());
    grid->addWidget(note, 3, 0, 1, 2);
    return frame;
}

QWidget* FormAdvSel::BuildHow() {
    QGroupBox* const frame = MakeFrame(form_.FrameHow, "FrameHow");
    QGridLayout* const grid = GridIn(*frame);
    grid->addWidget(MakeOption(form_.OReplace, "OReplace"), 0, 0);
    grid->addWidget(MakeOption(form_.OAdd, "OAdd"), 0, 1);
    grid->addWidget(MakeOption(form_.OTake, "OTake"), 0, 2);
    return frame;
}

QLayout* FormAdvSel::BuildButtons() {
    auto* row = new QHBoxLayout;
    row->setSpacing(kControlGap);
    QPushButton* const clear = MakeButton(form_.CClear, "CClear");
    // A text that the program sets tells nobody; the marks of bad ones go all the same.
    connect(clear, &QPushButton::clicked, this, [this] {
        for (QLineEdit* field : findChildren<QLineEdit*>()) Q_EMIT field->textChanged(field->text());
    });
    row->addWidget(clear);
    row->addStretch(1);
    QPushButton* const apply = MakeButton(form_.CApply, "CApply");
    apply->setDefault(true);
    row->addWidget(apply);
    row->addWidget(MakeButton(form_.CClose, "CClose"));
    return row;
}

void FormAdvSel::showEvent(QShowEvent* event) {
    if (!event->spontaneous()) {
        form_.Visible = true;
        advanced_selection::Refresh(app_, HasFlareModel);
        firstField_->setFocus();
    }
    QDialog::showEvent(event);
}

void FormAdvSel::hideEvent(QHideEvent* event) {
    if (!event->spontaneous()) form_.Visible = false;
    QDialog::hideEvent(event);
}

}  // namespace glintara::desktop
