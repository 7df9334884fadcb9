#include "app/Body.h"

#include "panel/FourPs.h"

Body::Body()
{
    ui.setupUi(this);
    // The program's name is the same in every language, so it takes the place
    // of the form's translated title.
    setWindowTitle(QStringLiteral("aelk"));
    panel = new FourPs;
    ui.bodyLayout->addWidget(panel);
    panel->focusFirstStep();
}
