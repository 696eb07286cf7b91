#include "desktop/core/form_about.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>
#include <QUrl>
#include <QVBoxLayout>
#include <string_view>

#include "desktop/core/text_page.h"
#include "desktop/main/bindings.h"
#include "desktop/main/form_parts.h"
#include "desktop/main/style.h"
#include "state/version.h"

namespace glintara::desktop {

namespace {

constexpr auto kSources = "qrc:/manual/sources.md";
constexpr QSize kFirstSize(520, 500);
constexpr int kTitlePixels = 26;

QLabel* MakeLine(const char* name, std::string_view text) {
    auto* line = new QLabel(ToQt(std::string(text)));
    line->setObjectName(name);
    line->setTextInteractionFlags(Qt::TextSelectableByMouse);
    return line;
}

QLabel* MakeQuiet(const char* text) {
    auto* label = new QLabel(text);
    label->setProperty("quiet", true);
    return label;
}

}  // namespace

FormAbout::FormAbout(QWidget* parent) : QDialog(parent) {
    setObjectName("FormAbout");
    setWindowTitle("About");
    auto* column = new QVBoxLayout(this);
    column->setSpacing(kFrameGap);

    QLabel* const title = MakeLine("LTitle", ProgramTitle());
    title->setFont(TitleFont(kTitlePixels));
    column->addWidget(title);

    auto* facts = new QHBoxLayout;
    facts->setSpacing(kControlGap);
    facts->addWidget(MakeQuiet("Released"));
    facts->addWidget(MakeLine("LReleaseDate", kReleaseDate));
    facts->addSpacing(2 * kFrameGap);
    facts->addWidget(MakeQuiet("Build"));
    facts->addWidget(MakeLine("LBuild", VersionLabel()));
    facts->addStretch(1);
    column->addLayout(facts);

    auto* sources = new TextPage("TSources", "Sources and licences");
    sources->ShowMarkdown(QUrl(kSources));
    column->addWidget(sources, 1);

    auto* row = new QHBoxLayout;
    row->addStretch(1);
    auto* close = new QPushButton("CLOSE");
    close->setObjectName("CClose");
    close->setAccessibleName("CLOSE");
    close->setToolTip("Close this window");
    close->setDefault(true);
    connect(close, &QPushButton::clicked, this, &QDialog::close);
    row->addWidget(close);
    column->addLayout(row);
    // Its arrows turn the page at once; Return closes from there too.
    sources->setFocus();
    resize(kFirstSize);
}

}  // namespace glintara::desktop
