#include "desktop/main/main_scope.h"

#include <QCloseEvent>
#include <QDragEnterEvent>
#include <QDropEvent>
#include <QFileInfo>
#include <QKeyEvent>
#include <QKeySequence>
#include <QMenu>
#include <QMenuBar>
#include <QMimeData>
#include <QPlainTextEdit>
#include <QScreen>
#include <QTimer>
#include <QUrl>
#include <QVBoxLayout>
#include <algorithm>
#include <vector>

#include "core/keys.h"
#include "core/start_up.h"
#include "desktop/main/bindings.h"
#include "desktop/main/keyboard.h"
#include "desktop/main/over_picture.h"
#include "desktop/main/panels_layout.h"
#include "desktop/main/window_memory.h"

namespace glintara::desktop {

namespace {

constexpr QSize kFirstSize(1280, 800);
constexpr int kLeastHeight = 720;

/// A window manager has given the window the whole screen within this time.
constexpr int kManagerMs = 300;

/// A menu of the bar, still empty.
QMenu& AddMenu(QMenuBar& bar, Mnemonics& letters, MenuEntry& top) {
    QMenu* const menu = bar.addMenu(ToQt(top.Caption));
    menu->setToolTipsVisible(true);
    const auto show = [menu, &bar, &top, letter = letters.Take(ToQt(top.Caption))] {
        menu->setTitle(WithMnemonic(ToQt(top.Caption), letter));
        menu->menuAction()->setVisible(top.Visible);
        // A bar without menus would still take the room of its edge.
        const auto menus = bar.actions();
        bar.setVisible(
            std::any_of(menus.begin(), menus.end(), [](const QAction* entry) { return entry->isVisible(); }));
    };
    top.Watch(show);
    show();
    return *menu;
}

/// A menu of the bar with its entries; a null entry is a separator.
void AddMenu(MainControls& main, QMenuBar& bar, Mnemonics& letters, MenuEntry& top,
             const std::vector<MenuEntry*>& entries) {
    QMenu& menu = AddMenu(bar, letters, top);
    Mnemonics own;
    for (MenuEntry* entry : entries)
        if (entry == nullptr)
            menu.addSeparator();
        else
            Bind(*menu.addAction(""), *entry, own.Take(ToQt(entry->Caption)), ToQt(KeyTextOf(main, *entry)));
}

QStringList LocalFilesOf(const QMimeData& data) {
    QStringList files;
    for (const QUrl& url : data.urls())
        if (url.isLocalFile()) files << url.toLocalFile();
    return files;
}

}  // namespace

MainScope::MainScope(Application& app, bool mapTools) : app_(app) {
    setObjectName("MainScope");
    setWindowTitle(ToQt(WindowTitle()));
    auto* central = new QWidget(this);
    auto* column = new QVBoxLayout(central);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(8);
    picture_ = new PictureBox(central);
    column->addWidget(picture_, 1);
    PutOverPicture(app_, *picture_);
    QWidget* const panels = BuildPanels();
    column->addWidget(panels);
    setCentralWidget(central);
    BuildMenus();
    BuildFileKeys();
    setAcceptDrops(true);
    // A text box would take the name of a file for text.
    for (auto* text : panels->findChildren<QPlainTextEdit*>()) text->viewport()->installEventFilter(this);
    if (mapTools) BuildMapTools();
    const QSize room = RoomOnScreen(*this);
    // Where the screen has less, the panels are scrolled.
    setMinimumSize(QSize(panels->sizeHint().width(), kLeastHeight).boundedTo(room));
    resize(kFirstSize.boundedTo(room));
    picture_->setFocus();
}

QWidget* MainScope::BuildPanels() {
    QWidget* const panels = BuildPanelRow(app_, this);
    KeepKeysWithPicture(*panels, *picture_);
    return panels;
}

void MainScope::BuildMenus() {
    MainControls& m = app_.Main;
    menus_ = menuBar();
    menus_->installEventFilter(this);
    QMenuBar& bar = *menus_;
    AddMenu(m, bar, letters_, m.MnuFile,
            {&m.MnuOpenAs, &m.MnuLoad, nullptr, &m.MnuSave, &m.MnuSaveAs, &m.MnuSaveStartUp, nullptr, &m.MnuUpdateCheck,
             nullptr, &m.MnuLoadTLE, nullptr, &m.MnuSavePicture, &m.MnuPrintPicture, nullptr, &m.MnuExit});
    AddMenu(m, bar, letters_, m.MnuTDraw,
            {&m.MnuRealTime,
             &m.MnuAutoRefine,
             &m.MnuGoToDate,
             nullptr,
             &m.MnuLib3D,
             &m.Mnu2D,
             &m.MnuMarkCities,
             &m.MnuSunLight,
             &m.MnuDrawSky,
             &m.MnuGlobeGrid,
             &m.MnuSolidGlobe,
             &m.MnuVisibilityArea,
             &m.MnuSatCircle,
             &m.MnuAriesLine,
             nullptr,
             &m.MnuAstroDetails,
             &m.MnuOrbitDetails,
             &m.MnuSatelliteNames,
             nullptr,
             &m.MnuHideCountries,
             &m.MnuSkyOnly,
             &m.MnuThinLines,
             nullptr,
             &m.MnuToggleSkyEarth});
    AddMenu(m, bar, letters_, m.MnuTSky,
            {&m.MnuDrawSkyMap, &m.MnuAutoMag, &m.MnuAtmo, &m.MnuLocalSky, &m.MnuStarsOnGlobe, nullptr, &m.MnuDrawSun,
             &m.MnuConstellations, &m.MnuStarNames, &m.MnuFrontStars, &m.MnuBackStars, &m.MnuSkyCircle, nullptr,
             &m.MnuMaximizeSky, &m.MnuReverseSky, &m.MnuFlatSky});
    AddMenu(m, bar, letters_, m.MnuSatellites,
            {&m.MnuPlotOrbit, &m.MnuPlotOrbitOverTime, &m.MnuProjectOrbit, &m.MnuProjectOverTime,
             &m.MnuProjectOrbitOnSky, &m.MnuHideOrbits, nullptr, &m.MnuSatInfo, &m.MnuDownloadTLE,
             &m.MnuManageSatellites, nullptr, &m.MnuChangeOrbit, &m.MnuClearOrbitList});
    AddMenu(m, bar, letters_, m.MnuModelS, {&m.MnuSGP1, &m.MnuSGP4, nullptr, &m.MnuObservations});
    AddMenu(m, bar, letters_, m.MnuTFlares,
            {&m.MnuModelSatSurfaces, &m.MnuFindFlare, &m.MnuExportTrack, &m.mnuFindCityTrack, nullptr,
             &m.MnuIridiumFlares, &m.MnuFlareTrack, &m.MnuDayFlares, &m.MnuAntennaID, &m.MnuMoonFlares});
    std::vector<MenuEntry*> view{&m.MnuFinePlot, nullptr,        &m.MnuZenithOrient,  &m.MnuUpOrientation,
                                 &m.MnuNoon,     &m.MnuMidnight, &m.MnuZeroOrient,    &m.MnuOrbitOrient,
                                 nullptr,        &m.MnuLockSky,  &m.MnuLockSatellite, nullptr};
    for (std::size_t n = 1; n < m.MnuViewX.size(); ++n) view.push_back(&m.MnuViewX[n]);
    view.push_back(nullptr);
    view.push_back(&m.MnuFullScreen);
    AddMenu(m, bar, letters_, m.MnuView, view);
    AddMenu(m, bar, letters_, m.MnuTQuick, {&m.MnuQResetView, &m.MnuQSkyChart, &m.MnuQHorizontView, &m.MnuQLHView});
    AddMenu(m, bar, letters_, m.MnuTSettings,
            {&m.MnuLocalSettings, &m.MnuFloatingSite, &m.MnuTransitMode[kTransitEntry], &m.MnuTwilight, &m.MnuRTimeStep,
             &m.MnuCities, &m.MnuNoUTC, &m.MnuColors});
    AddMenu(m, bar, letters_, m.MnuTHelp, {&m.MnuTips, &m.MnuHelp, &m.MnuAbout});
}

void MainScope::BuildFileKeys() {
    // They belong to the window, so that they hold in full screen too, where the menus are hidden.
    const auto add = [this](const QKeySequence& keys, const std::function<void()>& press) {
        auto* const action = new QAction(this);
        action->setShortcut(keys);
        addAction(action);
        connect(action, &QAction::triggered, this, press);
    };
    MainControls& m = app_.Main;
    add(Qt::CTRL | Qt::Key_O, [&m] { m.MnuOpenAs.Click(); });
    // What has no file yet gets one.
    add(
        Qt::CTRL | Qt::Key_S, [&m] { (m.MnuSave.Enabled ? m.MnuSave : m.MnuSaveAs).Click(); });
    add(
        Qt::CTRL | Qt::SHIFT | Qt::Key_S, [&m] { m.MnuSaveAs.Click(); });
    add(Qt::CTRL | Qt::Key_Q, [&m] { m.MnuExit.Click(); });
}

void MainScope::ShowWorkspace(const std::string& file) {
    const QFileInfo info(ToQt(file));
    setWindowTitle(ToQt(WindowTitle(FromQt(info.fileName()))));
}

void MainScope::dragEnterEvent(QDragEnterEvent* event) {
    if (!LocalFilesOf(*event->mimeData()).isEmpty()) event->acceptProposedAction();
}

void MainScope::dropEvent(QDropEvent* event) {
    const QStringList files = LocalFilesOf(*event->mimeData());
    if (files.isEmpty() || !listener_.dropped) return;
    // The other side keeps its file, whatever it has proposed.
    event->setDropAction(Qt::CopyAction);
    event->accept();
    // A question may come up, and the program that the files come from is not to wait for the answer.
    QMetaObject::invokeMethod(
        this, [this, files] { listener_.dropped(files); }, Qt::QueuedConnection);
}

void MainScope::BuildMapTools() {
    MainControls& m = app_.Main;
    QMenu& menu = AddMenu(*menus_, letters_, m.MnuMapTools);
    const auto add = [this, &menu](Button& button, const QKeySequence& keys = {}) {
        QAction* const action = menu.addAction("");
        action->setShortcut(keys);
        // The keys hold in full screen too, where the menus are hidden.
        addAction(action);
        Bind(*action, button);
    };
    // On its way to the menu the mouse leaves the place that is meant, so the vertex is picked by a key.
    add(m.CPolDbg, Qt::CTRL | Qt::Key_B);
    add(m.CPrevBorderDbg, Qt::CTRL | Qt::Key_Left);
    add(m.CNextBorderDbg, Qt::CTRL | Qt::Key_Right);
    add(m.CNewPolDbg, Qt::CTRL | Qt::Key_N);
    add(m.CAddPolDbg, Qt::CTRL | Qt::Key_D);
    menu.addSeparator();
    add(m.CSavePolDbg);
    add(m.CSaveDbg);
    add(m.CSaveBinDbg);
}

void MainScope::PutMenusOverPicture(bool over) {
    if (menusOverPicture_ == over) return;
    menusOverPicture_ = over;
    layout()->setMenuBar(over ? nullptr : menus_);
    if (over) LayMenusOverPicture();
}

void MainScope::LayMenusOverPicture() {
    if (!menusOverPicture_) return;
    menus_->setGeometry(0, 0, width(), menus_->heightForWidth(width()));
    menus_->raise();
}

bool MainScope::eventFilter(QObject* watched, QEvent* event) {
    // How high the bar is follows from the menus that it shows.
    const bool changes = event->type() == QEvent::Show || event->type() == QEvent::ActionChanged;
    if (watched == menus_ && menusOverPicture_ && changes)
        QMetaObject::invokeMethod(
            this, [this] { LayMenusOverPicture(); }, Qt::QueuedConnection);
    return (watched != menus_ && TakesFiles(*event)) || QMainWindow::eventFilter(watched, event);
}

bool MainScope::TakesFiles(QEvent& event) {
    const bool drag = event.type() == QEvent::DragEnter || event.type() == QEvent::DragMove;
    if (!drag && event.type() != QEvent::Drop) return false;
    auto& drop = static_cast<QDropEvent&>(event);
    if (LocalFilesOf(*drop.mimeData()).isEmpty()) return false;
    if (drag)
        drop.acceptProposedAction();
    else
        dropEvent(&drop);
    return true;
}

void MainScope::FillScreen(bool fill) {
    const QRect stood = geometry();
    PutMenusOverPicture(fill);
    setWindowState(windowState().setFlag(Qt::WindowFullScreen, fill));
    if (!fill) {
        if (!beforeFilling_.isNull()) setGeometry(beforeFilling_);
        beforeFilling_ = {};
        return;
    }
    // A screen without a window manager leaves the window as it is.
    QTimer::singleShot(kManagerMs, this, [this, stood] {
        if (!isFullScreen() || !isVisible() || size() == screen()->size()) return;
        beforeFilling_ = stood;
        setGeometry(screen()->geometry());
    });
}

void MainScope::resizeEvent(QResizeEvent* event) {
    QMainWindow::resizeEvent(event);
    if (menusOverPicture_) LayMenusOverPicture();
}

void MainScope::keyPressEvent(QKeyEvent* event) {
    if (event->matches(QKeySequence::Paste)) {
        if (listener_.pasted) listener_.pasted();
    } else if (IsPlain(*event) && listener_.keyPressed) {
        listener_.keyPressed(KeyByPlace(*event), event->modifiers().testFlag(Qt::ShiftModifier));
    }
}

void MainScope::closeEvent(QCloseEvent* event) { event->setAccepted(!listener_.mayClose || listener_.mayClose()); }

}  // namespace glintara::desktop
