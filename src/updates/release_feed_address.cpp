#include "updates/release_feed_address.h"

namespace zenlot {

QString releaseFeedAddress() {
    return QStringLiteral(ZENLOT_UPDATE_FEED);
}

} // namespace zenlot
