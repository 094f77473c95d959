// Names the settings for QML, which reads and assigns their properties. They are made by the
// application only.
#pragma once

#include "settings/app_settings.h"

#include <QtQml/qqml.h>

namespace zenlot {

struct AppSettingsForQml {
    Q_GADGET
    QML_FOREIGN(zenlot::AppSettings)
    QML_NAMED_ELEMENT(AppSettings)
    QML_UNCREATABLE("The application owns it")
};

} // namespace zenlot
