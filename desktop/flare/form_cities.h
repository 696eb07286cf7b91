#pragma once

// The window of cities and observing sites.

#include <QDialog>
#include <QListView>

#include "desktop/flare/place_list_model.h"
#include "flare/cities.h"
#include "state/application.h"

namespace glintara::desktop {

/// "Cities": lays out the form's controls and mirrors them. A click on a line, or Return, chooses its place. It is open
/// as long as `app.Cities.Visible` is set.
class FormCities : public QDialog {
  public:
    FormCities(Application& app, CityHooks hooks, QWidget* parent);
    FormCities(const FormCities&) = delete;
    FormCities& operator=(const FormCities&) = delete;
    ~FormCities() override;

  protected:
    void showEvent(QShowEvent* event) override;
    void hideEvent(QHideEvent* event) override;
    bool eventFilter(QObject* watched, QEvent* event) override;

  private:
    using Choice = void (*)(Application& app, const CityHooks& hooks, int line);

    QListView* MakeList(const char* name, PlaceListBox& list, PlaceListModel& model, Choice choose);
    QWidget* BuildFilters();
    QWidget* BuildSorting();
    QWidget* BuildCities();
    QWidget* BuildSites();
    QWidget* BuildChoices();

    Application& app_;
    CityHooks hooks_;
    PlaceListModel cities_;
    PlaceListModel sites_;
    QWidget* firstField_ = nullptr;
};

}  // namespace glintara::desktop
