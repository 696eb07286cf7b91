#include "desktop/program/desktop_program.h"

#include <QClipboard>
#include <QFileDialog>
#include <QFileInfo>
#include <QGuiApplication>
#include <QMouseEvent>
#include <QPainter>
#include <QWheelEvent>
#include <algorithm>
#include <cmath>
#include <utility>

#include "core/camera_moves.h"
#include "core/map_tools.h"
#include "core/panels.h"
#include "desktop/main/beside.h"
#include "desktop/main/bindings.h"
#include "desktop/main/keyboard.h"
#include "desktop/main/window_memory.h"
#include "flare/cities.h"
#include "flare/city_files.h"
#include "flare/surface_models.h"
#include "orbit/element_sets.h"
#include "orbit/files.h"
#include "scene/map_files.h"
#include "scene/map_text.h"
#include "scene/orientation.h"
#include "scene/overlays.h"
#include "scene/star_list.h"
#include "scene/surface/draw_surface.h"

namespace glintara::desktop {

namespace {

constexpr double kTwips = kTwipsPerScreenPixel;

/// Where element sets were last taken from, among the windows' places; before the first time, the examples.
constexpr auto kElementFolder = "ElementSets/folder";
constexpr auto kExampleFolder = "examples";

/// Where the last workspace was, and whether changes are asked about, in the same file.
constexpr auto kWorkspaceFolder = "Workspace/folder";
constexpr auto kAskToSave = "Workspace/askToSave";

/// The observer's code, which is the same whatever workspace is at hand.
constexpr auto kStationCode = "Observer/StationCode";

MouseHold HoldOf(const QMouseEvent& event) {
    constexpr Qt::KeyboardModifiers kAlt = Qt::AltModifier | Qt::MetaModifier | Qt::GroupSwitchModifier;
    return {.left = event.buttons().testFlag(Qt::LeftButton),
            .right = event.buttons().testFlag(Qt::RightButton),
            .middle = event.buttons().testFlag(Qt::MiddleButton),
            .shift = event.modifiers().testFlag(Qt::ShiftModifier),
            .control = event.modifiers().testFlag(Qt::ControlModifier),
            .alt = event.modifiers().testAnyFlags(kAlt)};
}

SpecialKey SpecialOf(int key) {
    if (key >= Qt::Key_F1 && key <= Qt::Key_F9)
        return static_cast<SpecialKey>(static_cast<int>(SpecialKey::F1) + key - Qt::Key_F1);
    switch (key) {
        case Qt::Key_F11:
            return SpecialKey::F11;
        case Qt::Key_Up:
            return SpecialKey::Up;
        case Qt::Key_Down:
            return SpecialKey::Down;
        case Qt::Key_Left:
            return SpecialKey::Left;
        case Qt::Key_Right:
            return SpecialKey::Right;
        case Qt::Key_Escape:
            return SpecialKey::Escape;
        default:
            return SpecialKey::None;
    }
}

bool IsWorkspace(const QString& file) { return IsWorkspaceName(FromQt(file)); }

KeyPress KeyOf(int qtKey, bool shift) {
    KeyPress key;
    key.special = SpecialOf(qtKey);
    key.shift = shift;
    if (qtKey >= Qt::Key_Space && qtKey < Qt::Key_AsciiTilde) key.character = static_cast<char>(qtKey);
    return key;
}

}  // namespace

DesktopProgram::DesktopProgram(const QString& placesFile, bool mapTools, std::unique_ptr<Browser> browser)
    : mapTools_(mapTools),
      places_(placesFile, QSettings::IniFormat),
      browser_(std::move(browser)),
      app_(boxes_, events_, signals_, ApplyDefaultModel),
      stages_(StagesOfProgram(satellites_)) {
    signals_.showFullScreen = [this](bool fullScreen) { ShowFullScreen(fullScreen); };
    program_ = std::make_unique<Program>(app_, usage_, clock_, MakeHooks());
    ConnectMenus();
    window_ = std::make_unique<MainScope>(app_, mapTools_);
    RememberPlace(*window_, places_);
    boxes_.SetParent(window_.get());
    observations_ = std::make_unique<ObservationWindows>(
        app_, *window_, places_, clock_, [this](int key, bool shift) { return PressKeyElsewhere(key, shift); });
    const ToolGround ground{*window_, places_, [this](int key, bool shift) { return PressKeyElsewhere(key, shift); }};
    settings_ = std::make_unique<SettingsWindows>(app_, program_->Time, ground);
    tracks_ = std::make_unique<TrackWindows>(app_, *window_, places_, program_->HooksOfCities(),
                                             [this](int key, bool shift) { return PressKeyElsewhere(key, shift); });
    satelliteWindows_ = std::make_unique<SatelliteWindows>(app_, ground);
    editor_ = std::make_unique<EditorWindow>(app_, ground);
    download_ = std::make_unique<DownloadWindow>(app_, ground, clock_);
    program_->End.AddAbort([this] { download_->Work().Abort(); });
    info_ = std::make_unique<InfoWindow>(app_, ground);
    signals_.refreshSatPosition = [this] { info_->Refresh(); };
    pictureDialogs_ = std::make_unique<QtPictureDialogs>(*window_, places_);
    pictureOutput_ = std::make_unique<PictureOutput>(
        app_, *pictureDialogs_, [this] { return window_->Picture().Image(); });
    signals_.refreshInfo = [this] { observations_->RefreshInfo(); };
    mouse_ = std::make_unique<MouseSteering>(app_, program_->Loop);
    ConnectWindow();
    ConnectMouse();
    ConnectWorkspace();
    // The window's own, so that it acts in full screen too, where the menus are hidden.
    auto* const goToDate = new QAction(window_.get());
    goToDate->setShortcut(Qt::CTRL | Qt::Key_G);
    window_->addAction(goToDate);
    QObject::connect(goToDate, &QAction::triggered, window_.get(), [this] { app_.Main.MnuGoToDate.Click(); });
    ConnectLabels();
}

DesktopProgram::~DesktopProgram() {
    // The window outlives those who listen to it, and tells of its own end.
    window_->Picture().SetListener({});
    window_->SetListener({});
}

ProgramHooks DesktopProgram::MakeHooks() {
    ProgramHooks hooks;
    hooks.picture.makePicture = [this] { MakePicture(); };
    // A star adds its light to the picture, so the faint ones come with a new one.
    hooks.picture.drawFineStars = [this] { MakePicture(); };
    hooks.picture.showPlottingNotice = [this] { ShowNotice(); };
    hooks.picture.raiseProgress = [this] { tracks_->RaiseProgress(); };
    hooks.startUp.loadMap = [this] { return LoadMap(); };
    hooks.startUp.loadSites = [this] { return LoadPlaces(); };
    hooks.startUp.rebuildStarList = [this] { RebuildStarList(app_.Data.Stars, app_.Data.View.MaxStarMag); };
    hooks.loadStartUpWorkspace = [this] { return OpenFirst(); };
    hooks.workspace.showLoadingNotice = [this] { ShowLoading(); };
    hooks.workspace.askForFile = [this](const FileQuestion& question) { return AskForFile(question); };
    hooks.startUp.keptStationCode = [this] { return FromQt(places_.value(kStationCode).toString()); };
    hooks.localSettings.keepStationCode = [this](const std::string& code) {
        places_.setValue(kStationCode, ToQt(code));
    };
    hooks.shutDown.closeWindow = [this] {
        QMetaObject::invokeMethod(window_.get(), &QWidget::close, Qt::QueuedConnection);
    };
    hooks.shutDown.unloadForm = [this](std::string_view name) {
        if (name == "FormFindFlare" && searchForm_) {
            searchForm_->hide();
        }
        if (name == "FormHelp" && helpForm_) helpForm_->hide();
        if (name == "FormAbout" && aboutForm_) aboutForm_->hide();
        observations_->Unload(name);
        settings_->Unload(name);
        tracks_->Unload(name);
        satelliteWindows_->Unload(name);
        editor_->Unload(name);
        download_->Unload(name);
        info_->Unload(name);
    };
    return hooks;
}

std::vector<std::string> DesktopProgram::LoadMap() {
    CommonData& data = app_.Data;
    if (mapTools_) {
        // Nobody else asks for the sea spots; without the file the tools have none to write.
        LoadSeaSpots(".", data.Map);
    }
    return LoadMapFiles(dataFolders_, data.Map, data.Stars, data.Cities);
}

/// The sites behind the cities, which the map files have brought. A user without sites is no user with an error.
bool DesktopProgram::LoadPlaces() {
    CityTables& tables = app_.Data.Cities;
    LoadSites(dataFolders_, tables);
    DeselectAllCities(tables);
    ClearAllCityFlag(tables);
    return true;
}

void DesktopProgram::Start(const std::filesystem::path& folder, const std::vector<std::filesystem::path>& dataFolders,
                           const QStringList& files) {
    files_ = files;
    dataFolders_.insert(dataFolders_.end(), dataFolders.begin(), dataFolders.end());
    std::vector<std::filesystem::path> pageFolders = dataFolders;
    pageFolders.insert(pageFolders.begin(), folder);
    usage_.SetNewsHost(NewsHost(GLINTARA_NEWS_HOST, pageFolders));
    FollowSize();
    program_->Start(folder);
    timers_ = std::make_unique<TimerDrivers>(app_.Main);
    window_->show();
}

void DesktopProgram::ConnectWindow() {
    WindowListener listener;
    listener.keyPressed = [this](int key, bool shift) { PressKey(key, shift); };
    // Asked once: a close that waits for long work comes back.
    listener.mayClose = [this] {
        return (app_.Run.Closing || program_->Files.MayDiscard()) && program_->End.Form_Unload();
    };
    listener.dropped = [this](const QStringList& files) { TakeDropped(files); };
    listener.pasted = [this] { PasteTLEText(app_, FromQt(QGuiApplication::clipboard()->text())); };
    window_->SetListener(std::move(listener));
}

void DesktopProgram::ConnectMenus() {
    MainControls& main = app_.Main;
    main.MnuLoadTLE.SetClickHandler([this] { OpenTLEFile(); });
    main.MnuSavePicture.SetClickHandler([this] { pictureOutput_->Save(); });
    main.MnuPrintPicture.SetClickHandler([this] { pictureOutput_->Print(); });
    main.MnuFindFlare.SetClickHandler([this] { ShowSearch(); });
    main.MnuManageSatellites.SetClickHandler([this] { ShowSatellites(); });
    main.MnuObservations.SetClickHandler([this] { observations_->ShowObservations(); });
    main.MnuLocalSettings.SetClickHandler([this] { settings_->ShowLocalSettings(); });
    main.MnuRTimeStep.SetClickHandler([this] { settings_->ShowRealTime(); });
    main.MnuColors.SetClickHandler([this] { settings_->ShowColors(); });
    main.MnuTwilight.SetClickHandler([this] { settings_->ShowTwilight(); });
    main.MnuGoToDate.SetClickHandler([this] { settings_->ShowDate(); });
    main.MnuCities.SetClickHandler([this] { tracks_->ShowCities(); });
    main.MnuHelp.SetClickHandler([this] { ShowHelp(); });
    main.MnuAbout.SetClickHandler([this] { ShowAbout(); });
    main.MnuDownloadTLE.SetClickHandler([this] { download_->Show(); });
    main.MnuModelSatSurfaces.SetClickHandler([this] { editor_->Show(); });
    main.MnuSatInfo.SetClickHandler([this] { info_->Show(); });
    app_.FindFlare.CSatList.SetClickHandler([this] { ShowSatellites(); });
    app_.Download.CSelSat.SetClickHandler([this] { ShowSatellites(); });
    app_.Mirror.CSelectWin.SetClickHandler([this] { ShowSatellites(); });
    main.MnuExit.SetClickHandler([this] { window_->close(); });
    if (mapTools_) ConnectMapTools(app_);
}

void DesktopProgram::ConnectWorkspace() {
    RunState& run = app_.Run;
    run.AskToSave = places_.value(kAskToSave, true).toBool();
    run.AskToSave.SetHandler([this] { places_.setValue(kAskToSave, app_.Run.AskToSave.Get()); });
    run.WorkspaceFile.SetHandler([this] { window_->ShowWorkspace(app_.Run.WorkspaceFile); });
}

void DesktopProgram::ConnectMouse() {
    const auto placeOf = [this](const QPointF& at) {
        const QSize size = window_->Picture().PictureSize();
        return MousePlace{at.x() * kTwips, at.y() * kTwips, size.width() * kTwips, size.height() * kTwips};
    };
    PictureListener listener;
    listener.left = [this] { mouse_->Left(); };
    listener.resized = [this] {
        FollowSize();
        // What the mouse rested on is elsewhere, and so perhaps the picture itself.
        mouse_->Left();
    };
    listener.moved = [this, placeOf](const QMouseEvent& event) {
        mouse_->Moved(placeOf(event.position()), HoldOf(event));
    };
    listener.pressed = [this, placeOf](const QMouseEvent& event) {
        rollAtPress_ = app_.Data.View.ViewRoll;
        mouse_->Moved(placeOf(event.position()), HoldOf(event));
    };
    listener.released = [this](const QMouseEvent& /*event*/) { mouse_->Released(); };
    listener.doubleClicked = [this, placeOf](const QMouseEvent& event) {
        // Two quick drags with another button are no double click.
        if (event.button() == Qt::LeftButton)
            mouse_->DoubleClicked(HoldOf(event));
        else
            mouse_->Moved(placeOf(event.position()), HoldOf(event));
    };
    listener.wheel = [this, placeOf](const QWheelEvent& event) {
        mouse_->Wheel(placeOf(event.position()), event.angleDelta().y());
    };
    listener.pinched = [this, placeOf](const QNativeGestureEvent& event) {
        mouse_->Pinched(placeOf(event.position()), 1 + event.value());
    };
    listener.rightClicked = [this](const QPoint& at) {
        // One that was not quite still has begun to roll the picture.
        app_.Data.View.ViewRoll = rollAtPress_;
        CameraMoved(app_);
        ShowPictureMenu(at);
    };
    listener.menuWanted = [this](const QPoint& at) { ShowPictureMenu(at); };
    listener.keysLost = [this] { mouse_->Abandoned(); };
    window_->Picture().SetListener(std::move(listener));
}

void DesktopProgram::ShowPictureMenu(const QPoint& at) {
    pictureMenu_ = std::make_unique<QMenu>(window_.get());
    for (MenuEntry* const entry : {&app_.Main.MnuSavePicture, &app_.Main.MnuPrintPicture}) {
        QAction* const action = pictureMenu_->addAction(ToQt(entry->Caption));
        QObject::connect(action, &QAction::triggered, window_.get(), [entry] { entry->Click(); });
    }
    pictureMenu_->popup(window_->Picture().mapToGlobal(at));
}

bool DesktopProgram::PressKey(int qtKey, bool shift) { return Form_KeyDown(app_, program_->Loop, KeyOf(qtKey, shift)); }

bool DesktopProgram::PressKeyElsewhere(int qtKey, bool shift) {
    return ActsInEveryWindow(KeyOf(qtKey, shift)) && PressKey(qtKey, shift);
}

void DesktopProgram::OpenTLEFile() {
    const QString folder = places_.value(kElementFolder, kExampleFolder).toString();
    const QString file =
        QFileDialog::getOpenFileName(window_.get(), "Open TLE File", folder,
                                     "TLE Files (*.tle);;Text Files (*.txt);;"
                                     "Mean-Elements Messages (*.csv *.json *.xml *.kvn);;All Files (*)");
    if (!file.isEmpty()) {
        places_.setValue(kElementFolder, QFileInfo(file).absolutePath());
        LoadTLEFile(app_, FromQt(file));
    }
}

std::optional<std::filesystem::path> DesktopProgram::AskForFile(const FileQuestion& question) {
    const QString title = QString::fromUtf8(question.title.data(), static_cast<qsizetype>(question.title.size()));
    const QString filter = QString::fromUtf8(question.filter.data(), static_cast<qsizetype>(question.filter.size()));
    QFileDialog dialog(window_.get(), title, places_.value(kWorkspaceFolder, ".").toString(), filter);
    dialog.setAcceptMode(question.toSave ? QFileDialog::AcceptSave : QFileDialog::AcceptOpen);
    dialog.setFileMode(question.toSave ? QFileDialog::AnyFile : QFileDialog::ExistingFile);
    // Then the dialog asks about the file that will be replaced.
    dialog.setDefaultSuffix("cst");
    if (question.toSave) dialog.selectFile(QFileInfo(ToQt(app_.Run.WorkspaceFile)).fileName());
    if (dialog.exec() != QDialog::Accepted || dialog.selectedFiles().isEmpty()) return std::nullopt;
    const QString file = dialog.selectedFiles().first();
    places_.setValue(kWorkspaceFolder, QFileInfo(file).absolutePath());
    return FromQt(file);
}

void DesktopProgram::TakeDropped(const QStringList& files) {
    const auto workspace = std::find_if(files.begin(), files.end(), IsWorkspace);
    if (workspace != files.end()) {
        program_->Files.Open(FromQt(*workspace));
        return;
    }
    // The first takes the box, the others come behind it.
    bool boxTaken = false;
    for (const QString& file : files) {
        const std::optional<std::string> more =
            boxTaken ? ReadWholeFile(FromQt(file), kLargestTLEFile) : std::optional<std::string>();
        if (more)
            PasteTLEText(app_, *more);
        else
            boxTaken = LoadTLEFile(app_, FromQt(file)) || boxTaken;
    }
}

bool DesktopProgram::OpenFirst() {
    const QStringList files = std::exchange(files_, {});
    const bool workspace = std::ranges::any_of(files, IsWorkspace);
    if (workspace) TakeDropped(files);
    const bool loaded = program_->Files.LoadStartUp();
    if (!workspace && !files.isEmpty()) TakeDropped(files);
    return loaded;
}

void DesktopProgram::OpenBeside(QWidget& form, Qt::Edge edge) {
    if (form.testAttribute(Qt::WA_Resized)) form.resize(form.size().boundedTo(RoomOnScreen(*window_)));
    RememberPlace(
        form, places_,
        [this, edge](const QWidget& opening) { return PlaceAtEdge(opening, *window_, window_->Picture(), edge); });
    HandKeysOn(form, [this](int key, bool shift) { return PressKeyElsewhere(key, shift); });
}

void DesktopProgram::ShowSearch() {
    if (!searchForm_) {
        searchForm_ = std::make_unique<FormFindFlare>(app_, window_.get());
        OpenBeside(*searchForm_, Qt::RightEdge);
    }
    searchForm_->show();
    searchForm_->raise();
    searchForm_->activateWindow();
}

void DesktopProgram::ShowSatellites() { satelliteWindows_->ShowSatellites(); }

void DesktopProgram::ShowHelp() {
    if (!helpForm_) {
        helpForm_ = std::make_unique<FormHelp>(window_.get());
        OpenBeside(*helpForm_, Qt::RightEdge);
    }
    helpForm_->show();
    helpForm_->raise();
    helpForm_->activateWindow();
}

void DesktopProgram::ShowAbout() {
    if (!aboutForm_) {
        aboutForm_ = std::make_unique<FormAbout>(window_.get());
        OpenBeside(*aboutForm_, Qt::RightEdge);
    }
    aboutForm_->show();
    aboutForm_->raise();
    aboutForm_->activateWindow();
}

void DesktopProgram::ShowFullScreen(bool fullScreen) { window_->FillScreen(fullScreen); }

void DesktopProgram::FollowSize() {
    const QSize inside = window_->centralWidget()->size();
    WindowResized(app_, inside.width() * kTwips, inside.height() * kTwips);
}

void DesktopProgram::MakePicture() {
    PictureBox& picture = window_->Picture();
    picture.TakeSize();
    surface_.Begin(picture.Image());
    GlobeFrame(app_, surface_, frame_, stages_);
    surface_.End();
    picture.update();
}

void DesktopProgram::ShowLoading() {
    PictureBox& picture = window_->Picture();
    surface_.Begin(picture.Image());
    ShowLoadingNotice({app_, surface_, frame_.Polygon});
    surface_.End();
    labelGround_ = {};  // the picture that it belongs to is gone
    picture.repaint();
}

void DesktopProgram::ConnectLabels() {
    stages_.beforeLabels = [this](const SceneContext& scene) {
        labelGround_ = {};
        if (!ShowsLabels(app_.Run)) return;
        QImage& image = window_->Picture().Image();
        const int rows = static_cast<int>(std::ceil(LabelOverlayHeight(scene) / kTwips * image.devicePixelRatio()));
        labelTop_ = std::max(0, image.height() - rows);
        labelGround_ = image.copy(0, labelTop_, image.width(), image.height() - labelTop_);
    };
    const auto changed = [this] {
        if (labelsChanged_ || labelGround_.isNull()) return;
        labelsChanged_ = true;
        QMetaObject::invokeMethod(
            window_.get(), [this] { RefreshLabels(); }, Qt::QueuedConnection);
    };
    MainControls& main = app_.Main;
    for (Label* label : {&main.LDateTime, &main.LCommandOutput, &main.LSatDetail, &main.LStatus, &main.LJD})
        label->Caption.SetHandler(changed);
}

/// Writes the texts over the picture anew, without drawing the picture.
void DesktopProgram::RefreshLabels() {
    labelsChanged_ = false;
    PictureBox& picture = window_->Picture();
    QImage& image = picture.Image();
    const bool fits = labelTop_ + labelGround_.height() == image.height() && labelGround_.width() == image.width();
    if (labelGround_.isNull() || !fits || !ShowsLabels(app_.Run) || app_.Run.FrameBusy) return;
    {
        QPainter painter(&image);
        painter.setCompositionMode(QPainter::CompositionMode_Source);
        painter.drawImage(QPointF(0, labelTop_ / image.devicePixelRatio()), labelGround_);
    }
    surface_.Begin(image);
    DrawLabelOverlay({app_, surface_, frame_.Polygon});
    surface_.End();
    picture.update(0, qFloor(labelTop_ / image.devicePixelRatio()), picture.width(), picture.height());
}

void DesktopProgram::ShowNotice() {
    PictureBox& picture = window_->Picture();
    surface_.Begin(picture.Image());
    ShowPlottingNotice({app_, surface_, frame_.Polygon});
    surface_.End();
    picture.repaint();
}

}  // namespace glintara::desktop
