// An icon of this program in the desktop's status area. It is there for as long as the object
// lives, whenever the desktop has such an area.
//
// Panels differ. Some tell of a click, and we show a menu of our own; some show the menus of their
// items themselves, and only what setMenu() was given. An item serves both.
//
// Everything here belongs to the main thread; handlers are called from the event loop.
#pragma once

#include "platform/command.h"

#include <QList>
#include <QString>

namespace zenlot {

// A picture of which only the opacity counts: the desktop, or we, tint it to stand out from the
// panel.
struct TemplateImage {
    QString file;      // an SVG, square
    QString themeName; // how a panel finds the same picture in its icon theme

    friend bool operator==(const TemplateImage&, const TemplateImage&) = default;
};

class StatusItem {
  public:
    StatusItem() = default;
    StatusItem(const StatusItem&) = delete;
    StatusItem& operator=(const StatusItem&) = delete;
    virtual ~StatusItem() = default;

    virtual void setImage(const TemplateImage& image) = 0;

    // What the icon says, for those who hover over it and for those who can't see it.
    virtual void setToolTip(const QString& text) = 0;

    // The menu for panels that show it themselves. Replaces the one of before.
    virtual void setMenu(const QList<Command>& entries) = 0;
};

} // namespace zenlot
