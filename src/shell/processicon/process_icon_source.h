// The icon of a process: that of the application which it is, a picture for JavaScript runtimes, or
// that of the bundle around its executable; none for other processes.
//
// Another pid begins anew. Another executablePath alone does not: it counts with the next pid.
#pragma once

#include "shell/processicon/icon_source.h"

#include <QString>

namespace zenlot {

class ProcessIconSource : public zenlot::IconSource { // qualified for qmltyperegistrar
    Q_OBJECT
    QML_ELEMENT

    Q_PROPERTY(int pid READ pid WRITE setPid NOTIFY pidChanged)
    Q_PROPERTY(QString executablePath MEMBER executablePath_)

  public:
    using IconSource::IconSource;

    int pid() const { return pid_; }
    void setPid(int pid);

  Q_SIGNALS:
    void pidChanged();

  protected:
    Search search() const override;

  private:
    int pid_{0};
    QString executablePath_;
};

} // namespace zenlot
