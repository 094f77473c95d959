// A release of this program, and the feed that tells of the newest one. A feed is a JSON object of
// at most 64 KiB:
//
//     {
//         "version": "1.4.0",
//         "page": "https://zenlot.example/releases/1.4.0",
//         "date": "2026-03-05"
//     }
//
// `page` is for people: it says what is new and where to get it. It must be an https address.
// `date` may be left out. Other keys are for newer programs and are passed over.
#pragma once

#include "updates/release_version.h"

#include <QByteArray>
#include <QDate>
#include <QUrl>

#include <optional>

namespace zenlot {

struct Release {
    ReleaseVersion version;
    QUrl page;
    QDate date; // invalid when the feed does not tell it
};

// None unless all of it makes sense: half an answer is no reason to send somebody somewhere.
std::optional<Release> releaseFromFeed(const QByteArray& feed);

} // namespace zenlot
