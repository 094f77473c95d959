// The folders in which the user's own files of this program live: absolute paths without a slash
// at the end. They need not exist.
#pragma once

#include <QString>

namespace zenlot {

struct HomeDirectories {
    QString home;
    QString configHome; // what the user chose
    QString stateHome;  // what a program keeps from run to run
    QString dataHome;   // what a program installs for the user

    friend bool operator==(const HomeDirectories&, const HomeDirectories&) = default;
};

} // namespace zenlot
