#include "core/element_labels.h"

#include <string>

#include "orbit/element_age.h"

namespace glintara {

void ShowElementAge(Application& app) {
    const std::string warning = ElementAgeWarning(ElementAgeAt(app.Data, app.Data.SimTime));
    for (Label* label : {&app.Main.LElementAge, &app.FindFlare.LElementAge}) {
        label->Caption = warning;
        label->Visible = !warning.empty();
    }
}

}  // namespace glintara
