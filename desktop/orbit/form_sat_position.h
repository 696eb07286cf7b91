#pragma once

// The window of the working satellite's position.

#include <QDialog>
#include <QGridLayout>
#include <QLabel>
#include <QLayout>
#include <array>
#include <cstddef>

#include "state/application.h"

namespace glintara::desktop {

/// "Satellite Info": where the working satellite is and how it moves. Each line can be marked and copied; Ctrl+C copies
/// all of them while none is marked. The numbers stand with their decimal points below each other, so that only digits
/// change from picture to picture.
class FormSatPosition : public QDialog {
  public:
    FormSatPosition(Application& app, QWidget* parent);
    FormSatPosition(const FormSatPosition&) = delete;
    FormSatPosition& operator=(const FormSatPosition&) = delete;
    ~FormSatPosition() override;

  protected:
    void showEvent(QShowEvent* event) override;
    void hideEvent(QHideEvent* event) override;

  private:
    /// A line of values: its parts, each with a place of its own.
    struct Row {
        QLabel* name = nullptr;
        QLabel* value = nullptr;
        QLabel* unit = nullptr;
    };

    QLabel* BuildTitle();
    QWidget* BuildValues();
    void BuildRow(QGridLayout& grid, int line, int place);
    void ShowRow(std::size_t line);
    QLayout* BuildButtons();

    SatPositionControls& form_;
    std::array<Row, kInfoLines> rows_;  // 1 to 12 are used
};

}  // namespace glintara::desktop
