#include "controls/ThemeSetup.h"

#include "controls/Captions.h"
#include "controls/FlatStyle.h"
#include "controls/Theme.h"

#include <QApplication>

namespace tessaro::theme {

void Apply(QApplication& application) {
    ChooseShades();
    QApplication::setStyle(new FlatStyle);
    QApplication::setPalette(ProductPalette());
    application.setFont(DefaultFont());
}

} // namespace tessaro::theme
