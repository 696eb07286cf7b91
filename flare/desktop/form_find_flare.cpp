#include "flare/desktop/form_find_flare.h"

#include <QCheckBox>
#include <QCloseEvent>
#include <QGridLayout>
#include <QGroupBox>
#include <QLabel>
#include <QLineEdit>
#include <QProgressBar>
#include <QPushButton>

#include "core/desktop/bindings.h"
#include "flare/search.h"

namespace glintara::desktop {

namespace {

constexpr int kFieldWidth = 90;
constexpr int kFormWidth = 420;

QPushButton* MakeButton(Button& control) {
    auto* button = new QPushButton;
    Bind(*button, control);
    return button;
}

void AddField(QGridLayout& grid, int row, Label& caption, TextBox& box) {
    auto* label = new QLabel;
    Bind(*label, caption);
    auto* field = new QLineEdit;
    Bind(*field, box);
    field->setMaximumWidth(kFieldWidth);
    field->setAlignment(Qt::AlignRight);
    field->setAccessibleName(ToQt(caption.Caption));
    label->setBuddy(field);
    grid.addWidget(label, row, 0);
    grid.addWidget(field, row, 1, Qt::AlignRight);
}

}  // namespace

FormFindFlare::FormFindFlare(Application& app, QWidget* parent) : QDialog(parent), app_(app) {
    FindFlareControls& form = app.FindFlare;
    setWindowTitle("Search Flares / Transits");
    auto* column = new QVBoxLayout(this);
    column->setSpacing(8);

    auto* frame = new QGroupBox(ToQt(form.FrameSearch.Caption));
    auto* grid = new QGridLayout(frame);
    grid->setContentsMargins(12, 10, 12, 10);
    AddField(*grid, 0, form.LInterval, form.TInterval);
    AddField(*grid, 1, form.LDist, form.TMaxDistance);
    auto* working = new QCheckBox;
    Bind(*working, form.CAutoWSet);
    grid->addWidget(working, 2, 0, 1, 2);
    column->addWidget(frame);

    auto* status = new QLabel;
    Bind(*status, form.LStatus);
    status->setProperty("accent", true);
    status->setWordWrap(true);
    column->addWidget(status);
    auto* progress = new QProgressBar;
    Bind(*progress, form.PB1);
    progress->setTextVisible(false);
    column->addWidget(progress);

    auto* buttons = new QGridLayout;
    QPushButton* const first = MakeButton(form.CFindFirst);
    first->setDefault(true);
    buttons->addWidget(first, 0, 0);
    buttons->addWidget(MakeButton(form.CFindNext), 0, 1);
    QPushButton* const abort = MakeButton(form.CAbort);
    abort->setAutoDefault(false);
    buttons->addWidget(abort, 0, 2);
    buttons->addWidget(MakeButton(form.CSatList), 1, 0, 1, 2);
    QPushButton* const exit = MakeButton(form.CExit);
    exit->setAutoDefault(false);
    buttons->addWidget(exit, 1, 2);
    column->addLayout(buttons);
    setMinimumWidth(kFormWidth);
    form.LStatus.Caption = "Warning: search will involve only selected satellites";
    form.CExit.SetClickHandler([this] { close(); });
}

void FormFindFlare::reject() { close(); }

void FormFindFlare::closeEvent(QCloseEvent* event) {
    // While it searches only Abort is there: closing aborts first.
    if (app_.FindFlare.CAbort.Enabled) {
        CAbort_click(app_);
        event->ignore();
        return;
    }
    event->accept();
}

}  // namespace glintara::desktop
