// Does work that may never come back, such as reading from a network that is gone, on a thread of
// its own, and waits for it only so long. While one piece of work hangs no other is begun.
//
//     BoundedWork reading(2s);
//     const std::optional<Text> text = reading.run<Text>([path] { return read(path); });
//
// The work may outlive whoever asked for it, so it owns all that it touches.
#pragma once

#include <chrono>
#include <functional>
#include <memory>
#include <optional>
#include <utility>

namespace zenlot {

class BoundedWork {
  public:
    explicit BoundedWork(std::chrono::milliseconds longest);

    // Nothing when the work takes longer, throws, or can't be begun.
    template <typename Result>
    std::optional<Result> run(std::function<Result()> work) {
        const auto result = std::make_shared<std::optional<Result>>();
        const bool isDone = finishes([result, work = std::move(work)] { result->emplace(work()); });
        return isDone ? std::move(*result) : std::nullopt;
    }

  private:
    struct State;

    bool finishes(std::function<void()> work);

    std::chrono::milliseconds longest_;
    std::shared_ptr<State> state_;
};

} // namespace zenlot
