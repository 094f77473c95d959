// What the session bus of a test is told. It may start what makes windows accessible and what keeps
// the settings of the panel and of the alerts, and nothing else that is installed, ours least of
// all.
#pragma once

#include "support/temporary_folder.h"

namespace zenlot {

// Writes it into the folder. Where the bus listens may be told to it otherwise.
inline std::filesystem::path writeSessionBusConfiguration(const TemporaryFolder& folder) {
    const std::filesystem::path installed = "/usr/share/dbus-1/services";
    for (const char* name : {"org.a11y.Bus.service", "org.xfce.Xfconf.service"})
        folder.link(std::string("session-bus/services/") + name, installed / name);
    folder.write("session-bus/session.conf",
                 "<busconfig><type>session</type><listen>unix:tmpdir=/tmp</listen><servicedir>" +
                     (folder.path() / "session-bus/services").string() +
                     "</servicedir><policy context='default'>"
                     "<allow send_destination='*' eavesdrop='true'/><allow eavesdrop='true'/>"
                     "<allow own='*'/></policy></busconfig>");
    return folder.path() / "session-bus/session.conf";
}

} // namespace zenlot
