#include "desktop/main/style.h"

#include <QAbstractItemView>
#include <QFontDatabase>
#include <QPainter>
#include <QPalette>
#include <QProxyStyle>
#include <QStyleFactory>

namespace glintara::desktop {

namespace {

constexpr auto kBackground = "#14171c";
constexpr auto kPanel = "#191d24";
constexpr auto kField = "#0f1216";
constexpr auto kRaised = "#20252e";
constexpr auto kHairline = "#2a303a";
constexpr auto kText = "#c9d1d9";
constexpr auto kQuiet = "#8b949e";
constexpr auto kFaint = "#565e69";
constexpr auto kAccent = "#e0c020";  // the gold of a satellite in sunlight

constexpr auto kWarning = "#e08a30";

constexpr int kTextPixels = 12;

QPalette DarkPalette() {
    QPalette palette;
    palette.setColor(QPalette::Window, QColor(kBackground));
    palette.setColor(QPalette::WindowText, QColor(kText));
    palette.setColor(QPalette::Base, QColor(kField));
    palette.setColor(QPalette::AlternateBase, QColor(kPanel));
    palette.setColor(QPalette::Text, QColor(kText));
    palette.setColor(QPalette::Button, QColor(kRaised));
    palette.setColor(QPalette::ButtonText, QColor(kText));
    palette.setColor(QPalette::PlaceholderText, QColor(kQuiet));
    palette.setColor(QPalette::ToolTipBase, QColor(kRaised));
    palette.setColor(QPalette::ToolTipText, QColor(kText));
    palette.setColor(QPalette::Highlight, QColor(kAccent));
    palette.setColor(QPalette::HighlightedText, QColor(kBackground));
    palette.setColor(QPalette::Link, QColor(kAccent));
    for (const QPalette::ColorRole role : {QPalette::WindowText, QPalette::Text, QPalette::ButtonText})
        palette.setColor(QPalette::Disabled, role, QColor(kFaint));
    return palette;
}

QString StyleSheet() {
    QString sheet = R"(
QMainWindow, QDialog { background: %background; }
QMenuBar { background: %panel; border-bottom: 1px solid %hairline; padding: 2px 6px; }
QMenuBar::item { background: transparent; padding: 3px 9px; border-radius: 4px; }
QMenuBar::item:selected { background: %raised; }
QMenu { background: %panel; border: 1px solid %hairline; padding: 4px; }
QMenu::item { padding: 4px 24px 4px 24px; border-radius: 3px; }
QMenu::item:selected { background: %raised; }
QMenu::item:disabled { color: %faint; }
QMenu::separator { height: 1px; background: %hairline; margin: 4px 6px; }
QMenu::indicator { width: 10px; height: 10px; left: 7px; border-radius: 2px; }
QMenu::indicator:checked { background: %accent; }
QGroupBox { background: %panel; border: 1px solid %hairline; border-radius: 6px; margin-top: 8px; padding: 4px 2px; }
QGroupBox::title { subcontrol-origin: margin; left: 10px; padding: 0 4px; color: %quiet; }
QCheckBox, QRadioButton { spacing: 5px; font-size: 11px; }
QCheckBox::indicator, QRadioButton::indicator { width: 11px; height: 11px; border: 1px solid #3a424e; border-radius: 3px; background: %field; }
QRadioButton::indicator { border-radius: 6px; }
QCheckBox::indicator:checked, QRadioButton::indicator:checked { background: %accent; border-color: %accent; }
QCheckBox::indicator:checked:disabled, QRadioButton::indicator:checked:disabled { background: %faint; border-color: %faint; }
QCheckBox::indicator:disabled, QRadioButton::indicator:disabled { border-color: %hairline; }
QCheckBox:focus, QRadioButton:focus { color: %accent; }
QPushButton { background: %raised; border: 1px solid #323a46; border-radius: 4px; padding: 2px 8px; min-height: 16px; }
QPushButton:hover { background: #28303b; }
QPushButton:pressed { background: %field; }
QPushButton:focus { border-color: %accent; }
QPushButton:default { border-color: %quiet; }
QPushButton:disabled { color: %faint; border-color: %hairline; }
QPushButton[day="true"] { background: transparent; border-color: transparent; padding: 0; }
QPushButton[day="true"]:hover { background: %raised; }
QPushButton[day="true"]:checked { color: %background; background: %accent; }
QPushButton[step="true"] { padding: 0; min-width: 20px; }
QPushButton[slot="true"] { min-width: 17px; }
QPushButton[lit="true"] { color: %accent; border-color: #6b5d1a; font-weight: bold; }
QLineEdit, QPlainTextEdit, QListView { background: %field; border: 1px solid %hairline; border-radius: 4px; padding: 2px 4px; selection-background-color: %accent; selection-color: %background; }
QLineEdit:focus, QPlainTextEdit:focus, QListView:focus { border-color: %accent; }
QListView::item:selected { background: #3a3312; color: %text; }
QLineEdit:disabled { background: %panel; color: %faint; }
QLineEdit[bad="true"] { border-color: %warning; }
QProgressBar { background: %field; border: 1px solid %hairline; border-radius: 4px; max-height: 8px; }
QProgressBar::chunk { background: %accent; border-radius: 3px; }
QTabWidget::pane { border: none; border-top: 1px solid %hairline; }
QTabBar::tab { background: transparent; color: %quiet; border-bottom: 2px solid transparent; padding: 4px 12px; }
QTabBar::tab:selected { color: %text; border-bottom-color: %accent; }
QTabBar::tab:hover, QTabBar::tab:focus { color: %accent; }
QSlider::groove:horizontal { background: %field; border: 1px solid %hairline; border-radius: 3px; height: 4px; }
QSlider::handle:horizontal { background: %quiet; border: 1px solid %quiet; border-radius: 6px; width: 10px; margin: -4px 0; }
QSlider::handle:horizontal:hover, QSlider::handle:horizontal:focus { background: %accent; border-color: %accent; }
QSlider::handle:horizontal:disabled { background: %hairline; border-color: %hairline; }
QListView::indicator { width: 11px; height: 11px; border: 1px solid #3a424e; border-radius: 3px; background: %field; }
QListView::indicator:checked { background: %accent; border-color: %accent; }
QLabel[quiet="true"] { color: %quiet; }
QLabel[accent="true"] { color: %accent; }
QLabel[warning="true"] { color: %warning; }
QScrollArea { border: none; background: transparent; }
QToolTip { background: %raised; color: %text; border: 1px solid %hairline; padding: 3px; }
QScrollBar:vertical { background: transparent; width: 9px; }
QScrollBar::handle:vertical { background: #3a424e; border-radius: 4px; min-height: 20px; }
QScrollBar:horizontal { background: transparent; height: 9px; }
QScrollBar::handle:horizontal { background: #3a424e; border-radius: 4px; min-width: 20px; }
QScrollBar::add-line, QScrollBar::sub-line { width: 0; height: 0; }
)";
    return sheet.replace("%background", kBackground)
        .replace("%panel", kPanel)
        .replace("%field", kField)
        .replace("%raised", kRaised)
        .replace("%hairline", kHairline)
        .replace("%text", kText)
        .replace("%quiet", kQuiet)
        .replace("%faint", kFaint)
        .replace("%accent", kAccent)
        .replace("%warning", kWarning);
}

/// Fusion, but for the row of a list that the keys are at: that has a frame alone. Fusion fills it, and it looks more
/// selected than those that are.
class Style : public QProxyStyle {
  public:
    Style() : QProxyStyle(QStyleFactory::create("Fusion")) {}

    void drawPrimitive(PrimitiveElement element, const QStyleOption* option, QPainter* painter,
                       const QWidget* widget) const override {
        if (element != PE_FrameFocusRect || qobject_cast<const QAbstractItemView*>(widget) == nullptr) {
            QProxyStyle::drawPrimitive(element, option, painter, widget);
            return;
        }
        painter->save();
        painter->setPen(QColor(kQuiet));
        painter->setBrush(Qt::NoBrush);
        painter->drawRect(option->rect.adjusted(0, 0, -1, -1));
        painter->restore();
    }
};

}  // namespace

void ApplyStyle(QApplication& application) {
    QApplication::setStyle(new Style);
    QApplication::setPalette(DarkPalette());
    QFont font = QApplication::font();
    if (QFontDatabase::families().contains("Liberation Sans")) font.setFamily("Liberation Sans");
    font.setPixelSize(kTextPixels);
    QApplication::setFont(font);
    application.setStyleSheet(StyleSheet());
}

QFont NumberFont(int pixels) {
    QFont font("Liberation Mono");
    font.setStyleHint(QFont::Monospace);
    font.setPixelSize(pixels);
    return font;
}

QFont TitleFont(int pixels) {
    QFont font("TeX Gyre Pagella");
    font.setStyleHint(QFont::Serif);
    font.setPixelSize(pixels);
    font.setBold(true);
    font.setItalic(true);
    return font;
}

}  // namespace glintara::desktop
