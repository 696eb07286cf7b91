#pragma once

// The window of the surface editor.

#include <QDialog>
#include <QGridLayout>
#include <QGroupBox>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QSlider>
#include <QTimer>

#include "desktop/main/mnemonics.h"
#include "state/application.h"

namespace glintara::desktop {

/// "Model Satellite Surfaces": the surfaces of the working satellite and how they stand in space. A number is taken when
/// its field is left, Return applies. Closed by its frame or Esc it leaves what was last applied.
class FormMirror : public QDialog {
  public:
    FormMirror(Application& app, QWidget* parent);
    FormMirror(const FormMirror&) = delete;
    FormMirror& operator=(const FormMirror&) = delete;
    ~FormMirror() override;

    /// Closes it without a further look at the fields.
    void reject() override;

  protected:
    void hideEvent(QHideEvent* event) override;
    bool eventFilter(QObject* watched, QEvent* event) override;

  private:
    QLayout* BuildListButtons();
    QWidget* BuildOrientation();
    QLayout* BuildAxis();
    QWidget* BuildTargetOrRotation();
    QWidget* BuildMirrorPage();
    QWidget* BuildMirrorData();
    QWidget* BuildTrimming();
    QWidget* BuildDrawingPage();
    QWidget* BuildDrawing();
    QLayout* BuildReadOut();
    QWidget* BuildSelected();
    QLayout* BuildButtons();
    QLabel* MakeLabel(Label& control, const char* name, QWidget* buddy, Mnemonics& letters);
    QLineEdit* MakeField(TextBox& box, const char* name, const Label& caption);
    QLineEdit* MakeNumber(NumberBox& box, const char* name, const Label& caption);
    QSlider* MakeSlider(Slider& control, const char* name, const Label& caption);
    void ShowList();
    void ShowHint();

    Application& app_;
    MirrorControls& form_;
    Mnemonics letters_;        // of what is always in sight
    Mnemonics mirrorLetters_;  // and of each page besides
    Mnemonics drawingLetters_;
    QTimer timer_;
    QListWidget* list_ = nullptr;
    QLabel* hint_ = nullptr;  // in the place of the frames of a surface, while they are hidden
    bool busy_ = false;       // list and control are being brought into line
};

}  // namespace glintara::desktop
