#pragma once

// Keeping and printing the picture as it is shown.

#include <QImage>
#include <QPrinter>
#include <QSettings>
#include <QWidget>
#include <functional>
#include <optional>
#include <string>

#include "state/application.h"

namespace glintara::desktop {

/// What both ask the user.
class PictureDialogs {
  public:
    PictureDialogs() = default;
    PictureDialogs(const PictureDialogs&) = delete;
    PictureDialogs& operator=(const PictureDialogs&) = delete;
    virtual ~PictureDialogs() = default;

    /// The file to write; nothing when none is wanted after all. `suggested` is a name without a folder.
    virtual std::optional<QString> AskForFile(const QString& suggested) = 0;

    /// The printer and its paper; false when nothing is to be printed after all.
    virtual bool AskForPrinter(QPrinter& printer) = 0;
};

/// Asks by Qt's dialogs. The folder is remembered among the windows' places; at first it is that of the user's pictures.
class QtPictureDialogs : public PictureDialogs {
  public:
    QtPictureDialogs(QWidget& window, QSettings& places) : window_(window), places_(places) {}

    std::optional<QString> AskForFile(const QString& suggested) override;
    bool AskForPrinter(QPrinter& printer) override;

  private:
    QWidget& window_;
    QSettings& places_;
};

/// The name that a picture of the displayed instant is kept by.
std::string PictureName(const CommonData& data);

class PictureOutput {
  public:
    /// `picture` gives what is on show, in pixels of the display. Both must outlive this.
    PictureOutput(Application& app, PictureDialogs& dialogs, std::function<QImage()> picture)
        : app_(app), dialogs_(dialogs), picture_(std::move(picture)) {}

    /// Writes the picture to a PNG file that the user names. The file is there whole or not at all; why not, a message tells.
    void Save();

    /// Prints the picture on a page of its own, as large as the paper allows, across the page when it is wider than high.
    void Print();

  private:
    Application& app_;
    PictureDialogs& dialogs_;
    std::function<QImage()> picture_;
};

}  // namespace glintara::desktop
