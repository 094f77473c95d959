// What a notification carries: integers and strings by key.
//
// A value of the other type counts as no value, so receivers state what they expect:
//
//     const UserInfo info{{kPortKey, 3000}, {kProcessNameKey, u"node"_s}};
//     info.integer(kPortKey);  // 3000
//     info.string(kPortKey);   // none
#pragma once

#include <QLatin1StringView>
#include <QString>

#include <cstdint>
#include <initializer_list>
#include <map>
#include <optional>
#include <utility>
#include <variant>

namespace zenlot {

inline constexpr QLatin1StringView kPortKey{"port"};
inline constexpr QLatin1StringView kPidKey{"pid"};
inline constexpr QLatin1StringView kStartTimeKey{"startTime"}; // of the process
inline constexpr QLatin1StringView kObstacleKey{"obstacle"};   // to its end, as a number
inline constexpr QLatin1StringView kProcessNameKey{"processName"};
inline constexpr QLatin1StringView kDisplayNameKey{"displayName"};

class UserInfo {
  public:
    using Value = std::variant<std::int64_t, QString>;

    UserInfo() = default;
    UserInfo(std::initializer_list<std::pair<const QString, Value>> values) : values_(values) {}

    void set(const QString& key, Value value) { values_.insert_or_assign(key, std::move(value)); }

    std::optional<std::int64_t> integer(const QString& key) const {
        return valueOf<std::int64_t>(key);
    }
    std::optional<QString> string(const QString& key) const { return valueOf<QString>(key); }

    friend bool operator==(const UserInfo&, const UserInfo&) = default;

  private:
    template <class Type>
    std::optional<Type> valueOf(const QString& key) const {
        const auto found = values_.find(key);
        if (found == values_.end() || !std::holds_alternative<Type>(found->second))
            return std::nullopt;
        return std::get<Type>(found->second);
    }

    std::map<QString, Value> values_;
};

} // namespace zenlot
