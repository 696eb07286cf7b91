#include "desktop/main/qt_services.h"

#include <QApplication>
#include <QCheckBox>
#include <QDesktopServices>
#include <QElapsedTimer>
#include <QMessageBox>
#include <QProcess>
#include <QStandardPaths>
#include <QUrl>

#include "desktop/main/bindings.h"

namespace glintara::desktop {

namespace {

constexpr auto kTitle = "Glintara";

/// The desktop's own way to open an address.
constexpr auto kOpener = "xdg-open";

/// An opener that ran longer than this was a browser, however it ended.
constexpr qint64 kBrowserRanMs = 30000;

QString TextOf(std::string_view text) {
    return QString::fromUtf8(text.data(), static_cast<qsizetype>(text.size())).replace("\r\n", "\n");
}

QMessageBox::Icon IconOf(MessageIcon icon) {
    switch (icon) {
        case MessageIcon::Critical:
            return QMessageBox::Critical;
        case MessageIcon::Information:
            return QMessageBox::Information;
        default:
            return QMessageBox::Warning;
    }
}

}  // namespace

QWidget* QtMessageBoxes::Parent() const {
    QWidget* const active = QApplication::activeWindow();
    return active != nullptr ? active : parent_;
}

void QtMessageBoxes::Tell(std::string_view text, MessageIcon icon) {
    QMessageBox box(IconOf(icon), kTitle, TextOf(text), QMessageBox::Ok, Parent());
    // Names from files stand in it, and "<" in a name is no markup.
    box.setTextFormat(Qt::PlainText);
    box.exec();
}

bool QtMessageBoxes::AskYesNo(std::string_view text) {
    QMessageBox box(QMessageBox::Question, kTitle, TextOf(text), QMessageBox::Yes | QMessageBox::No, Parent());
    box.setTextFormat(Qt::PlainText);
    return box.exec() == QMessageBox::Yes;
}

ChangesAnswer QtMessageBoxes::AskAboutChanges(std::string_view text, bool& dontAskAgain) {
    QMessageBox box(QMessageBox::Question, kTitle, TextOf(text),
                    QMessageBox::Yes | QMessageBox::No | QMessageBox::Cancel, Parent());
    box.setTextFormat(Qt::PlainText);
    box.setDefaultButton(QMessageBox::Yes);
    box.setCheckBox(new QCheckBox("Don't ask again", &box));
    const int answer = box.exec();
    dontAskAgain = box.checkBox()->isChecked();
    if (answer == QMessageBox::Yes) return ChangesAnswer::Save;
    return answer == QMessageBox::No ? ChangesAnswer::Discard : ChangesAnswer::Cancel;
}

void QtEvents::ServeEvents() { QCoreApplication::processEvents(); }

void QtEvents::WaitForEvents() { QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents); }

void QtBrowser::Open(const std::string& address, std::function<void()> failed) {
    const QString url = TextOf(address);
    const QString opener = QStandardPaths::findExecutable(kOpener);
    if (opener.isEmpty()) {
        if (!QDesktopServices::openUrl(QUrl(url))) failed();
        return;
    }
    // Qt would start the same command, but not say whether it found a browser. It has no owner: some openers become the
    // browser itself, which is to outlive this program.
    auto* const process = new QProcess;
    process->setStandardInputFile(QProcess::nullDevice());
    process->setStandardOutputFile(QProcess::nullDevice());
    process->setStandardErrorFile(QProcess::nullDevice());
    QElapsedTimer ran;
    ran.start();
    QObject::connect(
        process, &QProcess::finished, &alive_,
        [ran, failed](int code, QProcess::ExitStatus status) {
            const bool refused = status != QProcess::NormalExit || code != 0;
            if (refused && ran.elapsed() < kBrowserRanMs) failed();
        });
    QObject::connect(process, &QProcess::errorOccurred, &alive_, [failed](QProcess::ProcessError error) {
        if (error == QProcess::FailedToStart) failed();
    });
    QObject::connect(process, &QProcess::finished, process, &QObject::deleteLater);
    // What never began does not finish either.
    QObject::connect(process, &QProcess::errorOccurred, process, [process](QProcess::ProcessError error) {
        if (error == QProcess::FailedToStart) process->deleteLater();
    });
    process->start(opener, {url});
}

TimerDrivers::TimerDrivers(MainControls& main) {
    const auto controls = main.Timers();
    for (std::size_t i = 0; i < controls.size(); ++i) {
        timers_[i] = std::make_unique<QTimer>();
        Bind(*timers_[i], *controls[i]);
    }
}

}  // namespace glintara::desktop
