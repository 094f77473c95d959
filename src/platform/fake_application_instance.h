// An ApplicationInstance whose other starts are made by a test.
#pragma once

#include "platform/application_instance.h"

#include <QObject>
#include <QPointer>

#include <utility>

namespace zenlot {

class FakeApplicationInstance final : public ApplicationInstance {
  public:
    StartOutcome outcome{StartOutcome::first};
    QStringList uris; // that start() was called with

    StartOutcome start(const QStringList& startUris, const Activation& /*activation*/) override {
        uris = startUris;
        return outcome;
    }

    void setHandlers(QObject* context, Handlers handlers) override {
        context_ = context;
        handlers_ = std::move(handlers);
    }

    // As if the program were started again.
    void activate(const Activation& activation = {}) const {
        if (context_)
            handlers_.activate(activation);
    }
    void open(const QStringList& opened, const Activation& activation = {}) const {
        if (context_)
            handlers_.open(opened, activation);
    }

  private:
    QPointer<QObject> context_;
    Handlers handlers_;
};

} // namespace zenlot
