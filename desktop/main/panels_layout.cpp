#include "desktop/main/panels_layout.h"

#include <QCheckBox>
#include <QCoreApplication>
#include <QGridLayout>
#include <QGroupBox>
#include <QHelpEvent>
#include <QLabel>
#include <QMimeData>
#include <QMouseEvent>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QScrollArea>
#include <QScrollBar>
#include <QToolTip>
#include <QVBoxLayout>
#include <algorithm>
#include <vector>

#include "desktop/main/bindings.h"
#include "desktop/main/form_parts.h"
#include "desktop/main/style.h"
#include "orbit/element_sets.h"

namespace glintara::desktop {

namespace {

constexpr int kInnerGap = 6;
constexpr int kDatePixels = 14;

/// The first frame takes what room there is until its lines need not be broken; the rest is for element sets, which are
/// long lines.
constexpr QSize kLeastElementField(106, 40);
constexpr int kInfoStretch = 4;
constexpr int kMostInfoWidth = 370;

constexpr int kRepeatDelayMs = 400;
constexpr int kRepeatMs = 80;

constexpr int kNumberPixels = 11;
constexpr int kSmallNumberPixels = 10;

/// A frame whose ground can be pressed. The whole row is shown with the first of its frames, which each group has: a
/// row without frames would still take the room of its margins.
class PanelFrame : public QGroupBox {
  public:
    enum class Place { First, Other };

    PanelFrame(Frame& frame, QWidget* row, Place place = Place::Other) : QGroupBox(row), frame_(frame) {
        const auto show = [this, row, place] {
            setTitle(ToQt(frame_.Caption));
            setToolTip(ToQt(frame_.ToolTip));
            setVisible(frame_.Visible);
            if (place == Place::First) row->setVisible(frame_.Visible);
        };
        frame_.Watch(show);
        show();
        setSizePolicy(QSizePolicy::Minimum, QSizePolicy::Fixed);
    }

  protected:
    void mousePressEvent(QMouseEvent* /*event*/) override { frame_.Click(); }

  private:
    Frame& frame_;
};

QGridLayout* GridIn(QWidget* widget) {
    auto* grid = new QGridLayout(widget);
    grid->setContentsMargins(kInnerGap, kControlGap, kInnerGap, kControlGap);
    grid->setHorizontalSpacing(kInnerGap);
    grid->setVerticalSpacing(kControlGap);
    return grid;
}

QLabel* MakeLabel(Label& control, const QFont& font, const char* role) {
    auto* label = new QLabel;
    Bind(*label, control);
    label->setFont(font);
    if (role != nullptr) label->setProperty(role, true);
    return label;
}

QPushButton* MakeStepButton(Button& control) {
    QPushButton* const button = MakeButton(control);
    button->setProperty("step", true);
    return button;
}

/// A button that goes on while it is held.
QPushButton* Repeating(QPushButton* button) {
    button->setAutoRepeat(true);
    button->setAutoRepeatDelay(kRepeatDelayMs);
    button->setAutoRepeatInterval(kRepeatMs);
    return button;
}

template <class Widget>
Widget* MakeBox(CheckBox& control) {
    auto* box = new Widget;
    Bind(*box, control);
    box->setSizePolicy(QSizePolicy::Minimum, QSizePolicy::Fixed);  // words are never cut
    return box;
}

/// Lets rows share what the frame has of height: all frames are as high as the one that needs the most.
void SpreadRows(QGridLayout& grid, int rows) {
    for (int row = 0; row < rows; ++row) grid.setRowStretch(row, 1);
}

/// Check boxes in columns, filled from the top.
void AddBoxes(QGridLayout& grid, const std::vector<std::vector<CheckBox*>>& columns) {
    for (std::size_t c = 0; c < columns.size(); ++c)
        for (std::size_t r = 0; r < columns[c].size(); ++r)
            grid.addWidget(MakeBox<QCheckBox>(*columns[c][r]), static_cast<int>(r), static_cast<int>(c));
}

/// The date, which a double click opens for typing. Its first press is not one on the frame.
class DateLabel : public QLabel {
  public:
    explicit DateLabel(MainControls& main) : main_(main) {
        Bind(*this, main.LDateTime);
        setObjectName("LDateTime");
    }

  protected:
    void mousePressEvent(QMouseEvent* /*event*/) override {}
    void mouseDoubleClickEvent(QMouseEvent* event) override {
        if (event->button() == Qt::LeftButton) main_.MnuGoToDate.Click();
    }

  private:
    MainControls& main_;
};

/// Long words, which are addresses and paths, may break behind their signs, and where they have none for long.
QString BreakAddresses(const QString& text) {
    constexpr qsizetype kLongWord = 24;
    constexpr QChar kMayBreak(0x200B);
    QString broken;
    qsizetype unbroken = 0;
    for (const QChar c : text) {
        broken += c;
        unbroken = c.isSpace() ? 0 : unbroken + 1;
        const bool sign = QStringView(u"/?&").contains(c) && unbroken > kLongWord / 2;
        if (sign || unbroken == kLongWord) {
            broken += kMayBreak;
            unbroken = 0;
        }
    }
    return broken;
}

/// What a command says may be more than there is room for: resting the mouse on it shows all of it.
class OutputLabel : public QLabel {
  protected:
    /// A name with "<" in it is no markup.
    static QString Plain(const QString& text) {
        return "<p style='white-space:pre-wrap'>" + text.toHtmlEscaped() + "</p>";
    }

    bool event(QEvent* event) override {
        if (event->type() != QEvent::ToolTip) return QLabel::event(event);
        QToolTip::showText(static_cast<QHelpEvent*>(event)->globalPos(), Plain(text()), this);
        return true;
    }
};

QWidget* BuildInfo(MainControls& main, QWidget* parent) {
    auto* frame = new PanelFrame(main.FrameInfo, parent, PanelFrame::Place::First);
    auto* grid = GridIn(frame);
    auto* date = new DateLabel(main);
    date->setFont(NumberFont(kDatePixels));
    // Local time with its zone is longer: its mark goes to a second line.
    date->setWordWrap(true);
    date->setMinimumSize(date->fontMetrics().horizontalAdvance("DATE 00/00/0000 00:00:00.00 UTC (N)"),
                         date->fontMetrics().lineSpacing());
    date->setAlignment(Qt::AlignLeft | Qt::AlignTop);
    grid->addWidget(date, 0, 0, 1, 2);
    auto* julian = MakeLabel(main.LJD, NumberFont(kSmallNumberPixels), "quiet");
    Bind(*julian, main.LJD, [](QString text) { return text.replace(": ", ":\u00A0"); });  // no name without its number
    julian->setWordWrap(true);
    julian->setMinimumHeight(2 * julian->fontMetrics().lineSpacing());
    grid->addWidget(julian, 1, 0, 1, 2);
    auto* output = new OutputLabel;
    output->setObjectName("LCommandOutput");
    output->setProperty("accent", true);
    Bind(*output, main.LCommandOutput, BreakAddresses);
    output->setWordWrap(true);
    output->setMinimumHeight(2 * output->fontMetrics().lineSpacing());
    output->setAlignment(Qt::AlignLeft | Qt::AlignTop);
    grid->addWidget(output, 2, 0);
    grid->addWidget(MakeLabel(main.LFPS, NumberFont(kNumberPixels), "quiet"), 2, 1, Qt::AlignRight | Qt::AlignTop);
    auto* age = MakeLabel(main.LElementAge, frame->font(), "warning");
    age->setWordWrap(true);
    age->setMinimumHeight(age->fontMetrics().lineSpacing());
    KeepRoom(*age);
    grid->addWidget(age, 3, 0, 1, 2);
    auto* status = MakeLabel(main.LStatus, NumberFont(kSmallNumberPixels), "quiet");
    status->setWordWrap(true);
    status->setAlignment(Qt::AlignLeft | Qt::AlignTop);
    grid->addWidget(status, 4, 0, 1, 2);
    grid->setColumnStretch(0, 1);
    grid->setRowStretch(5, 1);
    frame->setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
    frame->setMaximumWidth(kMostInfoWidth);
    return frame;
}

QWidget* BuildTime(MainControls& main, QWidget* parent) {
    auto* frame = new PanelFrame(main.FrameTime, parent);
    auto* grid = GridIn(frame);
    grid->setHorizontalSpacing(kControlGap);
    struct Unit {
        const char* caption;
        Button* later;
        Button* earlier;
    };
    const std::vector<Unit> units{{"Y", &main.CYearOffsetInc, &main.CYearOffsetDec},
                                  {"M", &main.CMonthOffsetInc, &main.CMonthOffsetDec},
                                  {"D", &main.CDayOffsetInc, &main.CDayOffsetDec},
                                  {"h", &main.CHourOffsetInc, &main.CHourOffsetDec},
                                  {"m", &main.CMinuteOffsetInc, &main.CMinuteOffsetDec},
                                  {"s", &main.CSecondOffsetInc, &main.CSecondOffsetDec},
                                  {"ms", &main.CMilliInc, &main.Command3}};
    for (std::size_t i = 0; i < units.size(); ++i) {
        const int column = static_cast<int>(2 * i);
        auto* caption = new QLabel(units[i].caption);
        caption->setProperty("quiet", true);
        caption->setSizePolicy(QSizePolicy::Preferred, QSizePolicy::Fixed);
        caption->setAlignment(Qt::AlignCenter);
        grid->addWidget(caption, 0, column, 1, 2);
        grid->addWidget(Repeating(MakeStepButton(*units[i].later)), 1, column, 1, 2);
        grid->addWidget(Repeating(MakeStepButton(*units[i].earlier)), 2, column, 1, 2);
    }
    grid->addWidget(Repeating(MakeButton(main.CTOrbInc)), 3, 0, 1, 5);
    grid->addWidget(Repeating(MakeButton(main.CTOrbDec)), 3, 5, 1, 5);
    grid->addWidget(MakeButton(main.CClearTimeOffset), 3, 10, 1, 4);
    grid->addWidget(MakeBox<QCheckBox>(main.CRealTime), 4, 0, 1, 6);
    grid->addWidget(MakeBox<QCheckBox>(main.CAutoRefine), 4, 6, 1, 8);
    SpreadRows(*grid, 5);
    return frame;
}

QWidget* BuildStar(MainControls& main, QWidget* parent) {
    auto* frame = new PanelFrame(main.FrameStar, parent);
    auto* grid = GridIn(frame);
    AddBoxes(*grid,
             {{&main.CDrawSky, &main.CDrawSun, &main.CDrawConstallations, &main.CStarNames, &main.CDrawFrontStars},
              {&main.CDrawBackStars, &main.CLocalSky, &main.CFlatSky, &main.CReverseSky, &main.CSkyCircle}});
    SpreadRows(*grid, 5);
    return frame;
}

QWidget* BuildOrbit(MainControls& main, QWidget* parent) {
    auto* frame = new PanelFrame(main.FrameOrbit, parent);
    auto* grid = GridIn(frame);
    AddBoxes(
        *grid,
        {{&main.CPlotOrbit, &main.CPlotOrbitOverTime, &main.CProjectOverTime, &main.CThinLines, &main.CFlareTrack},
         {&main.CProjectOrbit, &main.CProjectOrbitOnSky, &main.CSatNames, &main.CSatCircle, &main.CIridiumFlares}});
    SpreadRows(*grid, 5);
    return frame;
}

/// A field in which the keys are letters of a text, not commands.
class ElementSetField : public QPlainTextEdit {
  public:
    ElementSetField(MainControls& main, bool& keyLock)
        : main_(main), keyLock_(keyLock), portions_(Bind(*this, main.TTLE)) {}

  protected:
    void focusInEvent(QFocusEvent* event) override {
        keyLock_ = true;
        QPlainTextEdit::focusInEvent(event);
    }
    void focusOutEvent(QFocusEvent* event) override {
        keyLock_ = false;
        QPlainTextEdit::focusOutEvent(event);
    }

    void insertFromMimeData(const QMimeData* source) override {
        if (!source->hasText()) return;
        const std::string text = TextPastedIntoBox(main_, FromQt(source->text()));
        if (!text.empty()) portions_.Paste(ToQt(text));
    }
    QMimeData* createMimeDataFromSelection() const override {
        auto* data = new QMimeData;
        data->setText(portions_.SelectedText());
        return data;
    }

  private:
    MainControls& main_;
    bool& keyLock_;
    TextPortions& portions_;
};

QWidget* BuildSat(MainControls& main, bool& keyLock, QWidget* parent) {
    auto* frame = new PanelFrame(main.FrameSat, parent);
    auto* grid = GridIn(frame);
    auto* box = new ElementSetField(main, keyLock);
    box->setFont(NumberFont(kNumberPixels));
    box->setLineWrapMode(QPlainTextEdit::NoWrap);
    box->setTabChangesFocus(true);
    box->setAccessibleName("Element sets");
    box->setPlaceholderText(ToQt(main.TTLE.ToolTip));
    box->setMinimumSize(kLeastElementField);
    box->setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Ignored);
    grid->addWidget(box, 0, 0, 1, 2);
    grid->addWidget(MakeButton(main.CApplyTLEOrbit), 1, 0);
    grid->addWidget(MakeButton(main.CChangeOrbit), 1, 1);
    grid->addWidget(MakeButton(main.CUpdateTLE), 2, 0);
    grid->addWidget(MakeButton(main.CClearOrbitList), 2, 1);
    auto* height = MakeLabel(main.LSatDetail, NumberFont(kSmallNumberPixels), "quiet");
    height->setMinimumWidth(height->fontMetrics().horizontalAdvance("Satellite height: 00000.0 km"));
    grid->addWidget(height, 3, 0, 1, 2);
    grid->setRowStretch(0, 1);
    frame->setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
    return frame;
}

/// A label of the stars with the buttons that step what it tells. It keeps the room of its longest text.
void AddLimit(QHBoxLayout& row, Label& text, const char* longest, Button& less, Button& more) {
    QFont font = row.parentWidget()->font();
    font.setPixelSize(kNumberPixels);
    auto* const label = MakeLabel(text, font, "quiet");
    label->setMinimumWidth(label->fontMetrics().horizontalAdvance(longest));
    row.addWidget(label);
    for (Button* button : {&less, &more}) row.addWidget(Repeating(MakeStepButton(*button)));
}

QWidget* BuildStarLimits(MainControls& main) {
    auto* limits = new QWidget;
    auto* row = new QHBoxLayout(limits);
    row->setContentsMargins(0, 0, 0, 0);
    row->setSpacing(kControlGap);
    AddLimit(*row, main.LMaxStarMag, "Max Star Mag. -0.25", main.CMaxMagDec, main.CMaxMagInc);
    row->addSpacing(kFrameGap);
    AddLimit(*row, main.LStarSize, "Star Size: 30", main.CStarSizeDec, main.CStarSizeInc);
    row->addStretch();
    return limits;
}

QWidget* BuildDraw(MainControls& main, QWidget* parent) {
    auto* frame = new PanelFrame(main.FrameDraw, parent);
    auto* grid = GridIn(frame);
    AddBoxes(*grid, {{&main.CPlaniSphere, &main.CSunLight, &main.CSolidGlobe, &main.CGlobeGrid, &main.CHideCountries,
                      &main.CSkyOnly},
                     {&main.CHCircle, &main.CDrawAries, &main.CAstroDetails, &main.C2OrbitDetails, &main.CMaximizeSky,
                      &main.CStarsOnGlobe},
                     {&main.CSatOnly, &main.CDrawArea, &main.CDayFlares, &main.CAntennaID, &main.CMoonFlares,
                      &main.CAutoMag}});
    auto* models = new QWidget;
    auto* column = new QVBoxLayout(models);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(kControlGap);
    column->addWidget(MakeBox<QCheckBox>(main.CLocalTime));
    column->addWidget(MakeBox<QCheckBox>(main.CNOSSFlare));
    column->addWidget(MakeBox<QRadioButton>(main.CSGP1));
    column->addWidget(MakeBox<QRadioButton>(main.CSGP4));
    // The program clears the one when the other is set.
    for (auto* button : models->findChildren<QRadioButton*>()) button->setAutoExclusive(false);
    auto* orbit = MakeLabel(main.LOrbit, NumberFont(kSmallNumberPixels), "quiet");
    // Two lines: the turns, and the period.
    Bind(*orbit, main.LOrbit, [](QString text) { return text.replace("  ", "\n"); });
    orbit->setMinimumHeight(2 * orbit->fontMetrics().lineSpacing());
    orbit->setMinimumWidth(orbit->fontMetrics().horizontalAdvance("Period: 0000.00 min"));
    orbit->setAlignment(Qt::AlignLeft | Qt::AlignTop);
    column->addWidget(orbit);
    auto* turns = new QHBoxLayout;
    turns->setSpacing(kControlGap);
    for (Button* button : {&main.COrbitTurnDec, &main.CTurnOne, &main.COrbitTurnInc})
        turns->addWidget(MakeStepButton(*button));
    column->addLayout(turns);
    column->addStretch();
    grid->addWidget(BuildStarLimits(main), 6, 0, 1, 3);
    grid->addWidget(models, 0, 3, 7, 1);
    SpreadRows(*grid, 7);
    frame->setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
    return frame;
}

/// The kept views: five columns, and twice two rows.
QWidget* BuildSlots(MainControls& main) {
    constexpr int kColumns = 5;
    constexpr int kSlotGap = 2;
    auto* slots = new QWidget;
    auto* grid = new QGridLayout(slots);
    grid->setContentsMargins(kControlGap, 0, 0, 0);
    grid->setHorizontalSpacing(kSlotGap);
    grid->setVerticalSpacing(kControlGap);
    int row = 0;
    const auto add = [&](const char* heading, std::array<Button, kViewCount + 1>& buttons) {
        auto* const caption = new QLabel(heading);
        caption->setProperty("quiet", true);
        grid->addWidget(caption, row, 0, 1, kColumns);
        for (std::size_t n = 1; n <= kViewCount; ++n) {
            const int place = static_cast<int>(n) - 1;
            QPushButton* const button = MakeStepButton(buttons[n]);
            button->setProperty("slot", true);
            grid->addWidget(button, row + 1 + place / kColumns, place % kColumns);
        }
        row += 3;
    };
    add("Enter View", main.CEnterView);
    add("Save View", main.CSaveView);
    SpreadRows(*grid, row);
    return slots;
}

QWidget* BuildViews(MainControls& main, QWidget* parent) {
    auto* frame = new PanelFrame(main.FrameViews, parent);
    auto* grid = GridIn(frame);
    const std::vector<Button*> buttons{&main.CZenith,           &main.CUpOrientation,   &main.CNoon,
                                       &main.CNightOrientation, &main.CZeroOrientation, &main.COrbitOrient};
    for (std::size_t i = 0; i < buttons.size(); ++i)
        grid->addWidget(MakeButton(*buttons[i]), static_cast<int>(i / 2), static_cast<int>(i % 2));
    grid->addWidget(MakeBox<QCheckBox>(main.CLockSky), 3, 0);
    grid->addWidget(MakeBox<QCheckBox>(main.CLockSatellite), 3, 1);
    auto* last = new QHBoxLayout;
    last->setSpacing(kControlGap);
    for (Button* button : {&main.CSkyChartSphere, &main.CToggleSkyEarth, &main.CRefreshDraw})
        last->addWidget(MakeButton(*button));
    grid->addLayout(last, 4, 0, 1, 2);
    grid->addWidget(BuildSlots(main), 0, 2, 5, 1);
    SpreadRows(*grid, 5);
    return frame;
}

/// The row, scrolled sideways where the window is narrower than its frames. It is shown and hidden with the row.
class PanelScroll : public QScrollArea {
  public:
    PanelScroll(QWidget* row, QWidget* parent) : QScrollArea(parent) {
        setFrameShape(QFrame::NoFrame);
        setFocusPolicy(Qt::NoFocus);
        setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
        setWidgetResizable(true);
        setSizePolicy(QSizePolicy::Preferred, QSizePolicy::Fixed);
        setWidget(row);
        row->installEventFilter(this);
    }

    QSize sizeHint() const override {
        const QSize row = widget()->minimumSizeHint();
        const int bar = width() < row.width() ? horizontalScrollBar()->sizeHint().height() : 0;
        return {row.width(), row.height() + bar};
    }
    QSize minimumSizeHint() const override { return {0, sizeHint().height()}; }

  protected:
    void resizeEvent(QResizeEvent* event) override {
        QScrollArea::resizeEvent(event);
        updateGeometry();
    }
    /// There is one way to scroll.
    void wheelEvent(QWheelEvent* event) override { QCoreApplication::sendEvent(horizontalScrollBar(), event); }
    bool eventFilter(QObject* watched, QEvent* event) override {
        if (watched == widget()) {
            if (event->type() == QEvent::ShowToParent || event->type() == QEvent::HideToParent)
                setVisible(event->type() == QEvent::ShowToParent);
            if (event->type() == QEvent::LayoutRequest) updateGeometry();
        }
        return QScrollArea::eventFilter(watched, event);
    }
};

}  // namespace

QWidget* BuildPanelRow(Application& app, QWidget* parent) {
    MainControls& main = app.Main;
    bool& keyLock = app.Run.KeyLock;
    auto* row = new QWidget;
    auto* scroll = new PanelScroll(row, parent);
    auto* layout = new QHBoxLayout(row);
    layout->setContentsMargins(kFrameGap, 0, kFrameGap, kFrameGap);
    layout->setSpacing(kFrameGap);
    std::vector<QWidget*> frames{BuildInfo(main, row),  BuildTime(main, row),         BuildStar(main, row),
                                 BuildOrbit(main, row), BuildSat(main, keyLock, row), BuildDraw(main, row),
                                 BuildViews(main, row)};
    // All of one height, so that nothing moves when the groups change.
    int height = 0;
    for (QWidget* frame : frames) height = std::max(height, frame->sizeHint().height());
    for (QWidget* frame : frames) {
        frame->setFixedHeight(height);
        layout->addWidget(frame, frame->sizePolicy().horizontalPolicy() == QSizePolicy::Expanding ? 1 : 0);
    }
    layout->setStretch(0, kInfoStretch);
    return scroll;
}

}  // namespace glintara::desktop
