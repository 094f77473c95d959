// A StatusBar for tests: what its item shows can be read, and a test clicks it.
#pragma once

#include "platform/status_bar.h"

#include <QObject>
#include <QPointer>

#include <utility>
#include <vector>

namespace zenlot {

class FakeStatusBar final : public StatusBar {
  public:
    // Of the item; as it was last when the item is gone.
    bool hasItem{false};
    TemplateImage image;
    QString toolTip;
    QList<Command> menu;
    int menusInstalled{0};

    std::unique_ptr<StatusItem> makeStatusItem(ActivationHandler handler) override {
        activate_ = std::move(handler);
        return std::make_unique<Item>(*this);
    }

    bool isAvailable() const override { return isAvailable_; }
    void setAvailable(bool available) {
        isAvailable_ = available;
        for (const auto& [context, handler] : observers_) {
            if (context)
                handler();
        }
    }
    void observeAvailability(QObject* context, std::function<void()> handler) override {
        observers_.emplace_back(context, std::move(handler));
    }

    void click(std::optional<QRect> place) {
        const ActivationHandler activate = activate_;
        activate(place);
    }

  private:
    class Item final : public StatusItem {
      public:
        explicit Item(FakeStatusBar& bar) : bar_(bar) { bar_.hasItem = true; }
        Item(const Item&) = delete;
        Item& operator=(const Item&) = delete;
        ~Item() override { bar_.hasItem = false; }

        void setImage(const TemplateImage& image) override { bar_.image = image; }
        void setToolTip(const QString& text) override { bar_.toolTip = text; }
        void setMenu(const QList<Command>& entries) override {
            bar_.menu = entries;
            ++bar_.menusInstalled;
        }

      private:
        FakeStatusBar& bar_;
    };

    ActivationHandler activate_;
    bool isAvailable_{true};
    std::vector<std::pair<QPointer<QObject>, std::function<void()>>> observers_;
};

} // namespace zenlot
