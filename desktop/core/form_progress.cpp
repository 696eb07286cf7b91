#include "desktop/core/form_progress.h"

#include <QCloseEvent>
#include <QHBoxLayout>
#include <QLabel>
#include <QProgressBar>
#include <QVBoxLayout>

#include "desktop/main/bindings.h"
#include "desktop/main/form_parts.h"

namespace glintara::desktop {

namespace {

constexpr int kFormWidth = 380;

}  // namespace

FormProgress::FormProgress(Application& app, QWidget* parent) : QDialog(parent), form_(app.Progress) {
    setObjectName("FormProgress");
    setWindowTitle("Progress");
    setWindowModality(Qt::ApplicationModal);
    auto* column = new QVBoxLayout(this);
    column->setSpacing(kFrameGap);
    auto* work = new QLabel;
    work->setObjectName("LWork");
    Bind(*work, form_.LWork);
    column->addWidget(work);
    auto* bar = new QProgressBar;
    bar->setObjectName("ProgressBar1");
    bar->setTextVisible(false);
    bar->setAccessibleName("Part of the work that is done");
    Bind(*bar, form_.ProgressBar1);
    column->addWidget(bar);
    auto* row = new QHBoxLayout;
    row->addStretch(1);
    QPushButton* const abort = MakeButton(form_.CAbort, "CAbort");
    // A Return that is held down must not end the work that it began.
    abort->setAutoDefault(false);
    row->addWidget(abort);
    column->addLayout(row);
    setMinimumWidth(kFormWidth);
}

FormProgress::~FormProgress() {
    form_.LWork.Watch({});
    form_.ProgressBar1.Watch({});
    form_.CAbort.Watch({});
}

void FormProgress::closeEvent(QCloseEvent* event) {
    if (!form_.Visible) {
        event->accept();
        return;
    }
    form_.CAbort.Click();
    event->ignore();
}

void FormProgress::reject() { form_.CAbort.Click(); }

}  // namespace glintara::desktop
