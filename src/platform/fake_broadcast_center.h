// A BroadcastCenter for tests that reaches no further than itself.
#pragma once

#include "platform/broadcast_center.h"

#include <QCoreApplication>
#include <QEvent>
#include <QObject>

#include <cstddef>
#include <utility>
#include <vector>

namespace zenlot {

class FakeBroadcastCenter final : public BroadcastCenter {
  public:
    void observe(const QString& name, Meaning /*meaning*/, QObject* context,
                 Handler handler) override {
        auto* observation = new Observation(name, std::move(handler), &observations_);
        QObject::connect(context, &QObject::destroyed, observation,
                         [observation] { delete observation; });
    }

    void post(const QString& name) override {
        for (Observation* observation : observationsOf(name))
            QCoreApplication::postEvent(observation, new QEvent(QEvent::User));
    }

    void settle() override {}

    std::size_t observerCount(const QString& name) const { return observationsOf(name).size(); }

  private:
    // Every event that it receives is a post of its name.
    struct Observation final : QObject {
        Observation(QString observedName, Handler observer, QObject* parent)
            : QObject(parent), name(std::move(observedName)), handler(std::move(observer)) {}

        void customEvent(QEvent* /*event*/) override {
            const Handler held = handler; // which may destroy this observation
            held(QString(name));
        }

        QString name;
        Handler handler;
    };

    std::vector<Observation*> observationsOf(const QString& name) const {
        std::vector<Observation*> found;
        for (QObject* child : observations_.children()) {
            auto* observation = static_cast<Observation*>(child);
            if (observation->name == name)
                found.push_back(observation);
        }
        return found;
    }

    QObject observations_; // owns one object per observation
};

} // namespace zenlot
