// The address of the release feed that this program was built to ask, from ZENLOT_UPDATE_FEED of
// the build's configuration. Empty when it was not set: then there is no feed.
#pragma once

#include <QString>

namespace zenlot {

QString releaseFeedAddress();

} // namespace zenlot
