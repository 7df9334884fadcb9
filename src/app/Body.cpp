#include "app/Body.h"

#include "panel/FourPs.h"

Body::Body()
{
    ui.setupUi(this);
    // Replaces the translated title of the form: the name of the program is the same in
    // every language.
    setWindowTitle(QStringLiteral("aelk"));
    panel = new FourPs;
    ui.bodyLayout->addWidget(panel);
    panel->focusFirstStep();
}
