#include "desktop/orbit/form_sat_position.h"

#include <QClipboard>
#include <QFontMetrics>
#include <QGroupBox>
#include <QGuiApplication>
#include <QHBoxLayout>
#include <QPushButton>
#include <QShortcut>
#include <QVBoxLayout>
#include <algorithm>
#include <string>
#include <string_view>

#include "desktop/main/bindings.h"
#include "desktop/main/form_parts.h"
#include "desktop/main/style.h"
#include "orbit/satellite_info.h"

namespace glintara::desktop {

namespace {

constexpr int kNumberPixels = 13;

/// Lines of values, and after which of them a gap stands: position, velocity, directions.
constexpr int kFirstValue = 1;
constexpr int kLastValue = 12;
constexpr int kGroupLines = 4;

/// Columns of the numbers: "-1234567.123", and one more for the sign of degrees.
constexpr int kNumberColumns = 13;
constexpr int kUnitColumns = 5;

/// Characters that a full number has from its decimal point on.
constexpr int kFractionColumns = 4;

constexpr QSize kFirstSize(330, 400);

constexpr QStringView kDegreeSign = u"\u00B0";

QString FromView(std::string_view text) { return QString::fromUtf8(text.data(), static_cast<qsizetype>(text.size())); }

int ColumnWidth() { return QFontMetrics(NumberFont(kNumberPixels)).horizontalAdvance('0'); }

/// Characters that stand free behind a value, so that all decimal points stand in one column.
int FreeBehind(const QString& value) {
    const bool degrees = value.endsWith(kDegreeSign);
    const bool number = !value.isEmpty() && (value.back().isDigit() || degrees);
    if (!number) return 1;
    const auto length = static_cast<int>(value.size()) - (degrees ? 1 : 0);
    const auto point = static_cast<int>(value.indexOf('.'));
    const int fraction = point < 0 ? 0 : length - point;
    return std::max(0, kFractionColumns - fraction) + (degrees ? 0 : 1);
}

QLabel* MakePart(const QString& name) {
    auto* part = new QLabel;
    part->setObjectName(name);
    part->setTextFormat(Qt::PlainText);
    part->setFont(NumberFont(kNumberPixels));
    return part;
}

void MakeSelectable(QLabel& label) {
    label.setTextInteractionFlags(Qt::TextSelectableByMouse);
    label.setToolTip("Mark with the mouse and copy with Ctrl+C");
}

}  // namespace

FormSatPosition::FormSatPosition(Application& app, QWidget* parent) : QDialog(parent), form_(app.SatPosition) {
    setObjectName("FormSatPosition");
    setWindowTitle("Satellite Info");
    auto* column = new QVBoxLayout(this);
    column->setSpacing(kFrameGap);
    column->addWidget(BuildTitle());
    column->addWidget(BuildValues());
    QLabel* const note = MakeLabel(form_.LNote, "LNote");
    note->setProperty("quiet", true);
    note->setWordWrap(true);
    note->setMinimumHeight(2 * note->fontMetrics().lineSpacing());
    note->setAlignment(Qt::AlignLeft | Qt::AlignTop);
    column->addWidget(note);
    column->addStretch(1);
    column->addLayout(BuildButtons());
    findChild<QPushButton*>("CClose")->setFocus();
    resize(kFirstSize);
}

FormSatPosition::~FormSatPosition() {
    for (Label& line : form_.LInfo) line.Watch({});
    form_.LNote.Watch({});
    form_.FrameSatPos.Watch({});
    form_.CCopy.SetClickHandler({});
    form_.CCopy.Watch({});
    form_.CClose.Watch({});
}

void FormSatPosition::showEvent(QShowEvent* event) {
    if (!event->spontaneous()) form_.Visible = true;
    QDialog::showEvent(event);
}

void FormSatPosition::hideEvent(QHideEvent* event) {
    if (!event->spontaneous()) form_.Visible = false;
    QDialog::hideEvent(event);
}

QLabel* FormSatPosition::BuildTitle() {
    auto* title = new QLabel;
    title->setObjectName("LInfo0");
    title->setTextFormat(Qt::PlainText);
    title->setProperty("accent", true);
    title->setTextInteractionFlags(Qt::TextSelectableByMouse);
    // A long name must not widen the window.
    title->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Preferred);
    Label& control = form_.LInfo[0];
    const auto show = [title, &control] {
        const QString text = ToQt(control.Caption);
        title->setText(text);
        title->setToolTip(Qt::convertFromPlainText(text, Qt::WhiteSpaceNormal));
        title->setAccessibleName(text);
    };
    control.Watch(show);
    show();
    return title;
}

QWidget* FormSatPosition::BuildValues() {
    QGroupBox* const frame = MakeFrame(form_.FrameSatPos, "FrameSatPos");
    auto* grid = new QGridLayout(frame);
    grid->setContentsMargins(kFrameMargin, kFrameMargin, kFrameMargin, kFrameMargin);
    grid->setHorizontalSpacing(kControlGap);
    grid->setVerticalSpacing(kControlGap);
    int place = 0;
    for (int line = kFirstValue; line <= kLastValue; ++line) {
        BuildRow(*grid, line, place++);
        if (line % kGroupLines == 0 && line < kLastValue) grid->setRowMinimumHeight(place++, kControlGap);
    }
    grid->setColumnMinimumWidth(1, kNumberColumns * ColumnWidth());
    grid->setColumnMinimumWidth(2, kUnitColumns * ColumnWidth());
    grid->setColumnStretch(3, 1);
    return frame;
}

void FormSatPosition::BuildRow(QGridLayout& grid, int line, int place) {
    const QString number = QString::number(line);
    Row& row = rows_[static_cast<std::size_t>(line)];
    row.name = MakePart("LName" + number);
    row.name->setProperty("quiet", true);
    row.value = MakePart("LInfo" + number);
    row.value->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
    MakeSelectable(*row.value);
    row.unit = MakePart("LUnit" + number);
    row.unit->setProperty("quiet", true);
    grid.addWidget(row.name, place, 0);
    grid.addWidget(row.value, place, 1);
    grid.addWidget(row.unit, place, 2);
    const auto index = static_cast<std::size_t>(line);
    form_.LInfo[index].Watch([this, index] { ShowRow(index); });
    ShowRow(index);
}

void FormSatPosition::ShowRow(std::size_t line) {
    const std::string text = form_.LInfo[line].Caption;
    const satellite_info::LineParts parts = satellite_info::PartsOf(text);
    const Row& row = rows_[line];
    const QString value = FromView(parts.value);
    row.name->setText(FromView(parts.name));
    row.value->setText(value);
    row.value->setContentsMargins(0, 0, FreeBehind(value) * ColumnWidth(), 0);
    row.value->setAccessibleName(ToQt(text));
    row.unit->setText(FromView(parts.unit));
}

QLayout* FormSatPosition::BuildButtons() {
    form_.CCopy.SetClickHandler([this] { QGuiApplication::clipboard()->setText(ToQt(satellite_info::TextOf(form_))); });
    auto* row = new QHBoxLayout;
    row->setSpacing(kControlGap);
    QPushButton* const copy = MakeButton(form_.CCopy, "CCopy");
    copy->setAutoDefault(false);
    row->addWidget(copy);
    row->addStretch(1);
    QPushButton* const close = MakeButton(form_.CClose, "CClose");
    close->setDefault(true);
    row->addWidget(close);
    auto* const copyKeys = new QShortcut(QKeySequence::Copy, this);
    connect(copyKeys, &QShortcut::activated, this, [this] {
        const auto* const line = qobject_cast<QLabel*>(focusWidget());
        if (line != nullptr && line->hasSelectedText())
            QGuiApplication::clipboard()->setText(line->selectedText());
        else
            form_.CCopy.Click();
    });
    return row;
}

}  // namespace glintara::desktop
