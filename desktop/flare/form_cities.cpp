#include "desktop/flare/form_cities.h"

#include <QCheckBox>
#include <QGridLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QRadioButton>
#include <QVBoxLayout>
#include <utility>

#include "desktop/main/bindings.h"
#include "desktop/main/form_parts.h"
#include "desktop/main/style.h"

namespace glintara::desktop {

namespace {

constexpr int kListPixels = 12;
constexpr int kFieldWidth = 110;
constexpr QSize kFirstSize(660, 540);

template <class Widget>
Widget* MakeBox(CheckBox& control, const char* name) {
    auto* box = new Widget;
    box->setObjectName(name);
    Bind(*box, control);
    return box;
}

QLineEdit* AddField(QGridLayout& grid, int row, Label& caption, TextBox& box, const char* name) {
    auto* label = new QLabel;
    Bind(*label, caption);
    auto* field = new QLineEdit;
    field->setObjectName(name);
    Bind(*field, box);
    field->setFixedWidth(kFieldWidth);
    field->setAccessibleName(ToQt(caption.Caption));
    label->setBuddy(field);
    grid.addWidget(label, row, 0);
    grid.addWidget(field, row, 1, Qt::AlignRight);
    return field;
}

QVBoxLayout* ColumnIn(QWidget& frame) {
    auto* column = new QVBoxLayout(&frame);
    column->setContentsMargins(kFrameMargin, kFrameMargin, kFrameMargin, kFrameMargin);
    column->setSpacing(kControlGap);
    return column;
}

}  // namespace

FormCities::FormCities(Application& app, CityHooks hooks, QWidget* parent)
    : QDialog(parent),
      app_(app),
      hooks_(std::move(hooks)),
      cities_(app.Data, app.Cities.CityListBox),
      sites_(app.Data, app.Cities.SiteListBox) {
    setObjectName("FormCities");
    setWindowTitle("Cities");
    auto* row = new QHBoxLayout(this);
    row->setSpacing(kFrameGap);
    row->addWidget(BuildCities(), 1);
    auto* column = new QVBoxLayout;
    column->setSpacing(kFrameGap);
    column->addWidget(BuildFilters());
    column->addWidget(BuildSorting());
    column->addWidget(BuildChoices());
    column->addWidget(BuildSites(), 1);
    auto* buttons = new QHBoxLayout;
    buttons->addStretch(1);
    QPushButton* const close = MakeButton(app.Cities.CClose, "CClose");
    close->setAutoDefault(false);
    buttons->addWidget(close);
    column->addLayout(buttons);
    row->addLayout(column);
    resize(kFirstSize);
}

FormCities::~FormCities() {
    app_.Cities.CityListBox.Watch({});
    app_.Cities.SiteListBox.Watch({});
}

QListView* FormCities::MakeList(const char* name, PlaceListBox& list, PlaceListModel& model, Choice choose) {
    auto* view = new QListView;
    view->setObjectName(name);
    view->setModel(&model);
    view->setEditTriggers(QAbstractItemView::NoEditTriggers);
    view->setFont(NumberFont(kListPixels));
    view->setUniformItemSizes(true);
    view->setLayoutMode(QListView::Batched);
    const auto take = [this, choose](const QModelIndex& at) { choose(app_, hooks_, at.row()); };
    connect(view, &QListView::clicked, this, take);
    connect(view, &QListView::activated, this, take);
    view->installEventFilter(this);
    list.Lines.SetWatcher([&model] { model.Renew(); });
    return view;
}

QWidget* FormCities::BuildCities() {
    CitiesControls& form = app_.Cities;
    QGroupBox* const frame = MakeFrame(form.FrameCities, "FrameCities");
    QVBoxLayout* const column = ColumnIn(*frame);
    QListView* const list = MakeList("CityListBox", form.CityListBox, cities_, ChooseCity);
    list->setAccessibleName("Cities");
    column->addWidget(list, 1);
    auto* total = new QLabel;
    total->setObjectName("LTotal");
    total->setProperty("quiet", true);
    Bind(*total, form.LTotal);
    column->addWidget(total);
    return frame;
}

QWidget* FormCities::BuildFilters() {
    CitiesControls& form = app_.Cities;
    auto* frame = new QGroupBox("Filter");
    auto* grid = new QGridLayout(frame);
    grid->setContentsMargins(kFrameMargin, kFrameMargin, kFrameMargin, kFrameMargin);
    grid->setVerticalSpacing(kControlGap);
    firstField_ = AddField(*grid, 0, form.LMinPop, form.TMinPop, "TMinPop");
    AddField(*grid, 1, form.LCountryFilter, form.TCountryFilter, "TCountryFilter");
    AddField(*grid, 2, form.LNameFilter, form.TNameFilter, "TNameFilter");
    grid->addWidget(MakeBox<QCheckBox>(form.CIncludeSites, "CIncludeSites"), 3, 0, 1, 2);
    QPushButton* const apply = MakeButton(form.CApply, "CApply");
    apply->setDefault(true);
    grid->addWidget(apply, 4, 1, Qt::AlignRight);
    return frame;
}

QWidget* FormCities::BuildSorting() {
    CitiesControls& form = app_.Cities;
    QGroupBox* const frame = MakeFrame(form.FrameSort, "FrameSort");
    QVBoxLayout* const column = ColumnIn(*frame);
    column->addWidget(MakeBox<QRadioButton>(form.OptionCity, "OptionCity"));
    column->addWidget(MakeBox<QRadioButton>(form.OptionCountry, "OptionCountry"));
    return frame;
}

QWidget* FormCities::BuildChoices() {
    CitiesControls& form = app_.Cities;
    auto* part = new QWidget;
    auto* column = new QVBoxLayout(part);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(kControlGap);
    for (const auto& [button, name] : {std::pair<Button*, const char*>{&form.CGetSites, "CGetSites"},
                                       std::pair<Button*, const char*>{&form.CGetTracked, "CGetTracked"}}) {
        QPushButton* const made = MakeButton(*button, name);
        made->setAutoDefault(false);
        column->addWidget(made);
    }
    column->addWidget(MakeBox<QCheckBox>(form.CMoveZenith, "CMoveZenith"));
    column->addWidget(MakeBox<QCheckBox>(form.CShowAllCities, "CShowAllCities"));
    return part;
}

QWidget* FormCities::BuildSites() {
    CitiesControls& form = app_.Cities;
    QGroupBox* const frame = MakeFrame(form.FrameSites, "FrameSites");
    QListView* const list = MakeList("SiteListBox", form.SiteListBox, sites_, ChooseSite);
    list->setAccessibleName("Observing sites");
    list->setMinimumHeight(4 * list->fontMetrics().lineSpacing());
    ColumnIn(*frame)->addWidget(list);
    return frame;
}

bool FormCities::eventFilter(QObject* watched, QEvent* event) {
    auto* const list = qobject_cast<QListView*>(watched);
    if (list != nullptr && event->type() == QEvent::KeyPress) {
        const int key = static_cast<QKeyEvent*>(event)->key();
        if (key == Qt::Key_Return || key == Qt::Key_Enter) {
            // Not to the form's own default, which would fill the list anew.
            if (list->currentIndex().isValid()) Q_EMIT list->activated(list->currentIndex());
            return true;
        }
    }
    return QDialog::eventFilter(watched, event);
}

void FormCities::showEvent(QShowEvent* event) {
    if (!event->spontaneous()) {
        app_.Cities.Visible = true;
        RefreshCities(app_);
        firstField_->setFocus();
    }
    QDialog::showEvent(event);
}

void FormCities::hideEvent(QHideEvent* event) {
    if (!event->spontaneous()) app_.Cities.Visible = false;
    QDialog::hideEvent(event);
}

}  // namespace glintara::desktop
