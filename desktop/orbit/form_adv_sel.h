#pragma once

// The window that selects satellites by what is known of them.

#include <QDialog>
#include <QGridLayout>
#include <QTimer>

#include "state/application.h"

namespace glintara::desktop {

/// "Advanced Satellite Selection": lays out the form's controls and mirrors them. It is open as long as
/// `app.AdvSel.Visible` is set.
class FormAdvSel : public QDialog {
  public:
    FormAdvSel(Application& app, QWidget* parent);
    FormAdvSel(const FormAdvSel&) = delete;
    FormAdvSel& operator=(const FormAdvSel&) = delete;
    ~FormAdvSel() override;

  protected:
    void showEvent(QShowEvent* event) override;
    void hideEvent(QHideEvent* event) override;

  private:
    QWidget* BuildOrbit();
    QWidget* BuildElements();
    QWidget* BuildModel();
    QWidget* BuildSky();
    QWidget* BuildHow();
    QLayout* BuildButtons();
    void AddRange(QGridLayout& grid, int row, RangeFields& fields, const char* name);

    Application& app_;
    AdvSelControls& form_;
    QTimer timer_;
    QWidget* firstField_ = nullptr;
};

}  // namespace glintara::desktop
