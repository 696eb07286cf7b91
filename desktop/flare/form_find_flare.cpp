#include "desktop/flare/form_find_flare.h"

#include <QCheckBox>
#include <QCloseEvent>
#include <QGridLayout>
#include <QGroupBox>
#include <QLabel>
#include <QLineEdit>
#include <QProgressBar>
#include <QStyle>
#include <QVBoxLayout>
#include <optional>
#include <string>

#include "desktop/main/bindings.h"
#include "desktop/main/form_parts.h"
#include "desktop/main/style.h"
#include "engine/astro/number_text.h"
#include "flare/found_flare.h"
#include "flare/search.h"

namespace glintara::desktop {

namespace {

constexpr int kFieldWidth = 90;
constexpr int kFormWidth = 420;
constexpr int kDetailPixels = 11;
/// Lines for which the status has room: the name of a satellite may be long.
constexpr int kStatusLines = 2;

void SetToolTips(FindFlareControls& form) {
    form.TInterval.ToolTip = "How far to look ahead of the displayed instant, in hours";
    form.TMaxDistance.ToolTip = "How near the centre of the flare must come to the observer, in kilometres";
    form.CAutoWSet.ToolTip = "The satellite of a flare that is found becomes the one that the main window shows";
    form.CFindFirst.ToolTip = "Find the earliest flare from the displayed instant on";
    form.CFindNext.ToolTip = "Find the flare that follows the one found last";
    form.CAbort.ToolTip = "End the search";
    form.CSatList.ToolTip = "Select the satellites that are searched";
    form.CExit.ToolTip = "Close this window";
}

/// The text of a number that a search can use: not negative, with "." as decimal mark.
bool IsUsable(const std::string& text) {
    const std::optional<double> number = StrictNumber(text);
    return number && *number >= 0;
}

/// Text that is no number, or a negative one, is marked as soon as it is typed.
void MarkBadText(QLineEdit& field) {
    const auto mark = [&field] {
        const bool bad = !IsUsable(FromQt(field.text()));
        if (field.property("bad").toBool() != bad) {
            field.setProperty("bad", bad);
            field.style()->unpolish(&field);
            field.style()->polish(&field);
        }
    };
    QObject::connect(&field, &QLineEdit::textChanged, &field, mark);
}

/// When the field is left, a negative number gives way to 0, as which a search takes it; what is no number stays to be
/// mended, and the status says so until it is.
void AnswerBadText(QLineEdit& field, const TextBox& box, Label& status) {
    MarkBadText(field);
    QObject::connect(&field, &QLineEdit::editingFinished, &field, [&field, &box, &status] {
        const std::string text = FromQt(field.text());
        if (!StrictNumber(text))
            status.Caption = NotANumber(box);
        else if (!IsUsable(text))
            field.setText("0");
    });
    QObject::connect(&field, &QLineEdit::textChanged, &field, [&status, said = NotANumber(box), &box]() mutable {
        if (status.Caption.Get() == said) status.Caption = std::string();
        said = NotANumber(box);
    });
}

/// A line of numbers that keeps its room when it is empty.
QLabel* MakeDetail(Label& control, const char* name) {
    auto* label = new QLabel;
    label->setObjectName(name);
    Bind(*label, control);
    label->setFont(NumberFont(kDetailPixels));
    label->setMinimumHeight(label->fontMetrics().height() + 1);
    return label;
}

QLineEdit* AddField(QGridLayout& grid, int row, Label& caption, const char* labelName, TextBox& box, const char* name,
                    Label& status) {
    auto* label = new QLabel;
    label->setObjectName(labelName);
    Bind(*label, caption);
    auto* field = new QLineEdit;
    field->setObjectName(name);
    Bind(*field, box);
    AnswerBadText(*field, box, status);
    field->setFixedWidth(kFieldWidth);
    field->setAlignment(Qt::AlignRight);
    field->setAccessibleName(ToQt(caption.Caption));
    label->setBuddy(field);
    grid.addWidget(label, row, 0);
    grid.addWidget(field, row, 1, Qt::AlignRight);
    return field;
}

}  // namespace

FormFindFlare::FormFindFlare(Application& app, QWidget* parent) : QDialog(parent), app_(app) {
    FindFlareControls& form = app.FindFlare;
    SetToolTips(form);
    setObjectName("FormFindFlare");
    setWindowTitle("Search Flares / Transits");
    auto* column = new QVBoxLayout(this);
    column->setSpacing(kFrameGap);
    column->addWidget(BuildParameters());

    auto* status = new QLabel;
    status->setObjectName("LStatus");
    Bind(*status, form.LStatus);
    status->setProperty("accent", true);
    status->setWordWrap(true);
    status->setAlignment(Qt::AlignLeft | Qt::AlignBottom);
    status->setMinimumHeight(kStatusLines * status->fontMetrics().lineSpacing());
    column->addWidget(status);
    auto* details = new QVBoxLayout;
    details->setSpacing(0);
    details->addWidget(MakeDetail(form.LFlareTime, "LFlareTime"));
    details->addWidget(MakeDetail(form.LFlareSky, "LFlareSky"));
    column->addLayout(details);
    auto* age = new QLabel;
    age->setObjectName("LElementAge");
    age->setProperty("warning", true);
    KeepRoom(*age);
    column->addWidget(age);
    Bind(*age, form.LElementAge);
    auto* progress = new QProgressBar;
    progress->setObjectName("PB1");
    Bind(*progress, form.PB1);
    progress->setTextVisible(false);
    progress->setAccessibleName("Part of the interval that has been searched");
    column->addWidget(progress);
    column->addStretch(1);
    column->addLayout(BuildButtons());
    setMinimumWidth(kFormWidth);
    form.CExit.SetClickHandler([this] { close(); });
}

FormFindFlare::~FormFindFlare() { app_.FindFlare.CExit.SetClickHandler({}); }

QWidget* FormFindFlare::BuildParameters() {
    FindFlareControls& form = app_.FindFlare;
    auto* frame = new QGroupBox;
    frame->setObjectName("FrameSearch");
    const auto showCaption = [frame, &form] { frame->setTitle(ToQt(form.FrameSearch.Caption)); };
    form.FrameSearch.Watch(showCaption);
    showCaption();
    auto* grid = new QGridLayout(frame);
    grid->setContentsMargins(kFrameMargin, kFrameMargin, kFrameMargin, kFrameMargin);
    grid->setVerticalSpacing(kControlGap);
    interval_ = AddField(*grid, 0, form.LInterval, "LInterval", form.TInterval, "TInterval", form.LStatus);
    AddField(*grid, 1, form.LDist, "LDist", form.TMaxDistance, "TMaxDistance", form.LStatus);
    auto* working = new QCheckBox;
    working->setObjectName("CAutoWSet");
    Bind(*working, form.CAutoWSet);
    grid->addWidget(working, 2, 0, 1, 2);
    return frame;
}

QLayout* FormFindFlare::BuildButtons() {
    FindFlareControls& form = app_.FindFlare;
    auto* buttons = new QGridLayout;
    buttons->setSpacing(kControlGap);
    QPushButton* const first = MakeButton(form.CFindFirst, "CFindFirst");
    first->setDefault(true);
    buttons->addWidget(first, 0, 0);
    QPushButton* const next = MakeButton(form.CFindNext, "CFindNext");
    buttons->addWidget(next, 0, 1);
    abort_ = MakeButton(form.CAbort, "CAbort");
    // The focus comes here when a search begins: a Return that is held down must not end it again.
    abort_->setAutoDefault(false);
    buttons->addWidget(abort_, 0, 2);
    buttons->addWidget(MakeButton(form.CSatList, "CSatList"), 1, 0, 1, 2);
    buttons->addWidget(MakeButton(form.CExit, "CExit"), 1, 2);
    for (int column = 0; column < buttons->columnCount(); ++column) buttons->setColumnStretch(column, 1);
    for (QPushButton* button : {first, next, abort_}) button->installEventFilter(this);
    return buttons;
}

void FormFindFlare::showEvent(QShowEvent* event) {
    if (!event->spontaneous() && !Searching()) {
        app_.FindFlare.LStatus.Caption = "Warning: search will involve only selected satellites";
        TellFoundFlare(app_, std::nullopt);
        // What is typed takes the place of the number that stands there.
        interval_->setFocus();
        interval_->selectAll();
    }
    QDialog::showEvent(event);
}

void FormFindFlare::reject() {
    if (Searching())
        app_.FindFlare.CAbort.Click();
    else
        close();
}

void FormFindFlare::closeEvent(QCloseEvent* event) {
    if (Searching()) {
        closeAfterSearch_ = true;
        app_.FindFlare.CAbort.Click();
        event->ignore();
        return;
    }
    event->accept();
}

bool FormFindFlare::focusNextPrevChild(bool next) {
    // Called also when the widget with the focus has just been disabled.
    if (focusWidget() == abort_ && !abort_->isEnabled()) returnFocus_ = true;
    return QDialog::focusNextPrevChild(next);
}

bool FormFindFlare::eventFilter(QObject* watched, QEvent* event) {
    if (event->type() == QEvent::EnabledChange) {
        if (watched == abort_) {
            FollowSearch();
        } else if (watched == focusBefore_ && returnFocus_ && focusBefore_->isEnabled()) {
            returnFocus_ = false;
            focusBefore_->setFocus();
        }
    }
    return QDialog::eventFilter(watched, event);
}

/// A search begins by enabling Abort, before the other buttons lose the focus, and ends by disabling it, before they
/// can take the focus again.
void FormFindFlare::FollowSearch() {
    if (Searching()) {
        focusBefore_ = focusWidget();
        returnFocus_ = false;
    } else if (closeAfterSearch_) {
        closeAfterSearch_ = false;
        // The search is still on the stack.
        QMetaObject::invokeMethod(this, &QWidget::close, Qt::QueuedConnection);
    }
}

}  // namespace glintara::desktop
