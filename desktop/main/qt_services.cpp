#include "desktop/main/qt_services.h"

#include <QApplication>
#include <QCheckBox>
#include <QMessageBox>

#include "desktop/main/bindings.h"

namespace glintara::desktop {

namespace {

constexpr auto kTitle = "Glintara";

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
    return QMessageBox::question(Parent(), kTitle, TextOf(text)) == QMessageBox::Yes;
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

TimerDrivers::TimerDrivers(MainControls& main) {
    const auto controls = main.Timers();
    for (std::size_t i = 0; i < controls.size(); ++i) {
        timers_[i] = std::make_unique<QTimer>();
        Bind(*timers_[i], *controls[i]);
    }
}

}  // namespace glintara::desktop
