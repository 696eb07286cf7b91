#include "desktop/core/form_date.h"

#include <QGridLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QVBoxLayout>
#include <array>

#include "core/date_entry.h"
#include "desktop/main/bindings.h"
#include "desktop/main/form_parts.h"
#include "desktop/main/style.h"

namespace glintara::desktop {

namespace {

constexpr int kDateCharacters = 12;
constexpr int kTimeCharacters = 12;
constexpr int kDayPixels = 12;
constexpr int kDaysOfWeek = 7;
constexpr QSize kDaySize(34, 24);
constexpr std::array<const char*, kDaysOfWeek> kWeek{"Mo", "Tu", "We", "Th", "Fr", "Sa", "Su"};

}  // namespace

FormDate::FormDate(Application& app, QWidget* parent)
    : SettingsForm(app.DateEntry.Visible, "FormDate", "Date and Time", parent), app_(app), form_(app.DateEntry) {
    auto* column = new QVBoxLayout(this);
    column->setSpacing(kFrameGap);
    column->addLayout(BuildFields());
    column->addWidget(BuildCalendar());
    QLabel* const run = MakeLabel(form_.LRun, "LRun");
    run->setProperty("quiet", true);
    column->addWidget(run);
    QLabel* const problem = MakeLabel(form_.LProblem, "LProblem");
    problem->setProperty("warning", true);
    problem->setWordWrap(true);
    problem->setMinimumHeight(problem->fontMetrics().lineSpacing());
    column->addWidget(problem);
    column->addStretch(1);
    column->addLayout(MakeOkAndCancel(form_.COk, form_.CCancel));
}

QLayout* FormDate::BuildFields() {
    auto* grid = new QGridLayout;
    grid->setVerticalSpacing(kControlGap);
    grid->setHorizontalSpacing(kFrameGap);
    const auto add = [&](int row, Label& caption, const char* labelName, TextBox& box, const char* name,
                         int characters) {
        QLabel* const label = MakeLabel(caption, labelName);
        QLineEdit* const field = MakeNumberField(box, name, caption, characters);
        label->setBuddy(field);
        grid->addWidget(label, row, 0);
        grid->addWidget(field, row, 1);
        return field;
    };
    date_ = add(0, form_.LDate, "LDate", form_.TDate, "TDate", kDateCharacters);
    MarkUnless(*date_, [](const std::string& text) { return date_entry::ReadDate(text).IsGood(); });
    date_->installEventFilter(this);
    BeginWith(*date_);
    QLineEdit* const time = add(1, form_.LTime, "LTime", form_.TTime, "TTime", kTimeCharacters);
    MarkUnless(*time, [](const std::string& text) { return date_entry::ReadTime(text).IsGood(); });
    QLabel* const zone = MakeLabel(form_.LZone, "LZone");
    zone->setProperty("quiet", true);
    zone->setMinimumWidth(zone->fontMetrics().horizontalAdvance("Local time, UTC+00:00"));
    grid->addWidget(zone, 1, 2);
    grid->setColumnStretch(2, 1);
    return grid;
}

QWidget* FormDate::BuildCalendar() {
    auto* frame = new QGroupBox;
    frame->setObjectName("FrameCalendar");
    auto* grid = new QGridLayout(frame);
    grid->setContentsMargins(kFrameMargin, kFrameMargin, kFrameMargin, kFrameMargin);
    grid->setSpacing(2);
    const auto addStep = [&](Button& control, const char* name, int place) {
        QPushButton* const button = MakePlainButton(control, name);
        button->setProperty("step", true);
        grid->addWidget(button, 0, place);
    };
    addStep(form_.CPrevYear, "CPrevYear", 0);
    addStep(form_.CPrevMonth, "CPrevMonth", 1);
    QLabel* const month = MakeLabel(form_.LMonth, "LMonth");
    month->setAlignment(Qt::AlignCenter);
    grid->addWidget(month, 0, 2, 1, 3);
    addStep(form_.CNextMonth, "CNextMonth", 5);
    addStep(form_.CNextYear, "CNextYear", 6);
    for (int day = 0; day < kDaysOfWeek; ++day) {
        auto* name = new QLabel(kWeek[static_cast<std::size_t>(day)]);
        name->setProperty("quiet", true);
        name->setAlignment(Qt::AlignCenter);
        grid->addWidget(name, 1, day);
    }
    for (std::size_t i = 0; i < form_.Days.size(); ++i) {
        auto* day = new QPushButton;
        const int cell = static_cast<int>(i);
        day->setObjectName(QString("Days_%1").arg(cell));
        day->setProperty("day", true);
        day->setAutoDefault(false);
        // The keyboard steps through the days from the field of the date.
        day->setFocusPolicy(Qt::NoFocus);
        day->setFont(NumberFont(kDayPixels));
        day->setFixedSize(kDaySize);
        day->installEventFilter(this);
        Bind(*day, form_.Days[i]);
        grid->addWidget(day, 2 + cell / kDaysOfWeek, cell % kDaysOfWeek);
    }
    return frame;
}

bool FormDate::StepByKey(int key) {
    switch (key) {
        case Qt::Key_Up:
            date_entry::StepDays(app_, 1);
            return true;
        case Qt::Key_Down:
            date_entry::StepDays(app_, -1);
            return true;
        case Qt::Key_PageUp:
            date_entry::StepMonths(app_, 1);
            return true;
        case Qt::Key_PageDown:
            date_entry::StepMonths(app_, -1);
            return true;
        default:
            return false;
    }
}

bool FormDate::eventFilter(QObject* watched, QEvent* event) {
    if (event->type() == QEvent::KeyPress && watched == date_ && StepByKey(static_cast<QKeyEvent*>(event)->key()))
        return true;
    if (event->type() == QEvent::MouseButtonDblClick && watched->property("day").toBool()) {
        form_.COk.Click();
        return true;
    }
    return SettingsForm::eventFilter(watched, event);
}

}  // namespace glintara::desktop
