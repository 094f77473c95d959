#include "platform/fake_user_defaults.h"
#include "platform/linux/json_user_defaults.h"
#include "support/temporary_files.h"

#include <QDebug>
#include <gtest/gtest.h>

#include <sys/stat.h>
#include <unistd.h>

#include <functional>
#include <limits>
#include <memory>
#include <string>
#include <thread>
#include <type_traits>
#include <utility>
#include <vector>

namespace zenlot {
namespace {

const QString kKey = QStringLiteral("key");
const QString kName = QStringLiteral("app/defaults.json");

constexpr qint64 kSmallest = std::numeric_limits<qint64>::min();
constexpr qint64 kLargest = std::numeric_limits<qint64>::max();
constexpr quint64 kLargestUnsigned = std::numeric_limits<quint64>::max();
constexpr double kInfinity = std::numeric_limits<double>::infinity();

// The value with the types of all its parts, since QVariant takes 3 and 3.0 for equal.
std::string typed(const std::optional<QVariant>& value) {
    return value ? QDebug::toString(*value).toStdString() : "absent";
}

// What holds for every UserDefaults.
template <typename Defaults>
class UserDefaultsContract : public testing::Test {
  protected:
    static std::unique_ptr<UserDefaults> make(const QString& path) {
        if constexpr (std::is_same_v<Defaults, JsonUserDefaults>)
            return std::make_unique<Defaults>(path);
        else
            return std::make_unique<Defaults>();
    }

    // Sets the value and reads it back with its types.
    std::string stored(const QVariant& value) {
        defaults_->set(kKey, value);
        return typed(defaults_->object(kKey));
    }

    TemporaryFiles folder_;
    std::unique_ptr<UserDefaults> defaults_ = make(folder_.path(kName));
};

using AllDefaults = testing::Types<FakeUserDefaults, JsonUserDefaults>;
TYPED_TEST_SUITE(UserDefaultsContract, AllDefaults);

TYPED_TEST(UserDefaultsContract, ValuesComeBackAsTheyWere) {
    EXPECT_EQ(typed(this->defaults_->object(kKey)), "absent");
    const QVariantList mixed{
        true, qint64{1}, 1.0, QStringLiteral("1"), QVariantList(), QVariant::fromValue(nullptr)};
    const QVariantMap nested{{QStringLiteral("a/b"), mixed},
                             {QString(), QVariantMap{{kKey, qint64{-1}}}}};
    const QString text = QStringLiteral("Grüße \"\\/\n\u0001 👩‍💻") + QChar(u'\0');
    for (const QVariant& value :
         std::vector<QVariant>{true, false, kSmallest, qint64{0}, kLargest, kLargestUnsigned, 3.0,
                               -0.1, 1e300, QString(), text, QVariantList(), mixed, nested}) {
        EXPECT_EQ(this->stored(value), typed(value));
        EXPECT_EQ(this->defaults_->object(kKey), value);
    }
    this->defaults_->remove(kKey);
    this->defaults_->remove(kKey);
    EXPECT_EQ(typed(this->defaults_->object(kKey)), "absent");
}

TYPED_TEST(UserDefaultsContract, WidensWhatItTakesAndRefusesTheRest) {
    const QVariant ports = QVariant::fromValue(QList<qint64>{3, 1});
    EXPECT_EQ(this->stored(ports), typed(QVariantList{qint64{3}, qint64{1}}));
    EXPECT_EQ(this->stored(QStringList{kKey}), typed(QVariantList{kKey}));
    EXPECT_EQ(this->stored(0.5F), typed(0.5));
    EXPECT_EQ(this->stored(7U), typed(qint64{7}));
    EXPECT_EQ(this->stored(7), typed(qint64{7}));
    for (const QVariant& refused : std::vector<QVariant>{
             QVariant(), QVariant::fromValue(nullptr), QByteArray("x"), kInfinity,
             QVariantList{QVariantList{QVariant(kInfinity)}}, QVariantMap{{kKey, kInfinity}}})
        EXPECT_EQ(this->stored(refused), typed(qint64{7})) << typed(refused);
}

TYPED_TEST(UserDefaultsContract, TypedReadings) {
    UserDefaults& defaults = *this->defaults_;
    for (const char* text : {"YES", "yes", "true", "T", "y", "1", "9x", " \t-007"}) {
        defaults.set(kKey, QString::fromLatin1(text));
        EXPECT_TRUE(defaults.boolean(kKey)) << text;
    }
    for (const char* text : {"", "NO", "false", "000", "+", "--1", "x1", "on"}) {
        defaults.set(kKey, QString::fromLatin1(text));
        EXPECT_FALSE(defaults.boolean(kKey)) << text;
    }
    struct Reading {
        QVariant value;
        bool boolean;
        std::optional<qint64> integer;
        std::optional<QList<qint64>> integers;
        std::optional<QStringList> strings;
    };
    const Reading readings[] = {
        {true, true, {}, {}, {}},
        {false, false, {}, {}, {}},
        {-1, true, -1, {}, {}},
        {0, false, 0, {}, {}},
        {kLargestUnsigned, true, {}, {}, {}},
        {0.5, true, {}, {}, {}},
        {0.0, false, {}, {}, {}},
        {QStringLiteral("3000"), true, {}, {}, {}},
        {QVariantList(), false, {}, QList<qint64>(), QStringList()},
        {QVariantList{3, 1}, false, {}, QList<qint64>{3, 1}, {}},
        {QVariantList{kKey}, false, {}, {}, QStringList{kKey}},
        {QVariantList{3, kKey}, false, {}, {}, {}},
        {QVariantList{3, true}, false, {}, {}, {}},
        {QVariantList{QVariant(3.0)}, false, {}, {}, {}},
        {QVariantMap{{kKey, true}}, false, {}, {}, {}},
    };
    for (const Reading& reading : readings) {
        defaults.set(kKey, reading.value);
        EXPECT_EQ(defaults.boolean(kKey), reading.boolean) << typed(reading.value);
        EXPECT_EQ(defaults.integer(kKey), reading.integer) << typed(reading.value);
        EXPECT_EQ(defaults.integers(kKey), reading.integers) << typed(reading.value);
        EXPECT_EQ(defaults.strings(kKey), reading.strings) << typed(reading.value);
    }
}

class JsonUserDefaultsTest : public testing::Test {
  protected:
    std::string stored() const { return typed(defaults_.object(kKey)); }

    TemporaryFiles folder_;
    JsonUserDefaults defaults_{folder_.path(kName)};
};

TEST_F(JsonUserDefaultsTest, WhatOtherProgramsPutThereSurvives) {
    folder_.write(kName, R"({"n": null, "o": {"a": [null, 18446744073709551615, 3.0]}})");
    EXPECT_EQ(typed(defaults_.object(QStringLiteral("n"))), "absent");
    defaults_.set(kKey, 1);
    QByteArray text = folder_.read(kName);
    EXPECT_EQ(QByteArray(text).simplified().replace(" ", ""),
              R"({"key":1,"n":null,"o":{"a":[null,18446744073709551615,3.0]}})");

    folder_.write(kName, text.replace("\"key\": 1", "\"key\": false"));
    JsonUserDefaults(folder_.path(kName)).set(QStringLiteral("other"), true);
    defaults_.set(QStringLiteral("mine"), true);
    EXPECT_EQ(stored(), typed(false));
    EXPECT_TRUE(defaults_.boolean(QStringLiteral("other")));
}

TEST_F(JsonUserDefaultsTest, ConcurrentWritersLoseNothing) {
    constexpr int kChanges = 40;
    std::vector<std::thread> writers;
    for (const QString& name : {QStringLiteral("a%1"), QStringLiteral("b%1")}) {
        writers.emplace_back([path = folder_.path(kName), name] {
            JsonUserDefaults defaults(path);
            for (int change = 0; change < kChanges; ++change)
                defaults.set(name.arg(change), change);
        });
    }
    for (std::thread& writer : writers)
        writer.join();
    for (int change = 0; change < kChanges; ++change) {
        EXPECT_EQ(defaults_.integer(QStringLiteral("a%1").arg(change)), change);
        EXPECT_EQ(defaults_.integer(QStringLiteral("b%1").arg(change)), change);
    }
}

TEST_F(JsonUserDefaultsTest, WritesOnlyWhatDiffersAndCanBeReadAgain) {
    const QByteArray text = R"({ "key" :3 })";
    folder_.write(kName, text);
    QVariant deep = true;
    for (int level = 0; level < 200; ++level)
        deep = QVariantMap{{kKey, deep}};
    defaults_.set(kKey, 3);
    defaults_.remove(QStringLiteral("other"));
    defaults_.set(kKey, deep);
    defaults_.set(kKey, QString(9000000, u'x'));
    EXPECT_EQ(folder_.read(kName), text);
    defaults_.set(kKey, 3.0);
    EXPECT_EQ(stored(), typed(3.0));
}

TEST_F(JsonUserDefaultsTest, SetsADamagedFileAsideUnderANewName) {
    const std::vector<QByteArray> damaged{R"({"key": tr)",
                                          "[1]",
                                          "\n",
                                          "{\"key\": \"\xff\"}",
                                          "{\"key\": 1e999}",
                                          "{\"key\": " + QByteArray(200, '[') +
                                              QByteArray(200, ']') + "}",
                                          QByteArray(1000000, '['),
                                          R"({"key": ")" + QByteArray(8388608, 'x') + "\"}"};
    QString aside = kName + QStringLiteral(".damaged");
    for (const QByteArray& text : damaged) {
        folder_.write(kName, text);
        EXPECT_EQ(stored(), "absent");
        defaults_.remove(kKey);
        EXPECT_TRUE(folder_.read(kName) == text);
        defaults_.set(kKey, true);
        EXPECT_EQ(stored(), typed(true));
        EXPECT_TRUE(folder_.read(aside) == text) << aside.toStdString();
        aside =
            kName + QStringLiteral(".damaged-%1").arg(folder_.names(QStringLiteral("app")).size());
    }
    EXPECT_EQ(folder_.read(kName + QStringLiteral(".damaged")), damaged.front());
}

TEST_F(JsonUserDefaultsTest, TakesBracketsInStringsAndAnEmptyFileForGood) {
    folder_.write(kName, "");
    const QString brackets = QStringLiteral("\\\"") + QString(500, u'[');
    defaults_.set(kKey, brackets);
    EXPECT_EQ(defaults_.object(kKey), brackets);
    EXPECT_EQ(folder_.names(QStringLiteral("app")).size(), 1);
}

TEST_F(JsonUserDefaultsTest, LeavesADamagedFileThatCannotBeSetAside) {
    // The longest name that can be replaced: with the suffix of a set-aside file it is too long.
    const QString name(248, u'n');
    JsonUserDefaults defaults(folder_.path(name));
    defaults.set(kKey, 1);
    EXPECT_EQ(typed(defaults.object(kKey)), typed(qint64{1}));
    folder_.write(name, "{");
    defaults.set(kKey, 2);
    EXPECT_EQ(folder_.read(name), "{");
    EXPECT_EQ(folder_.names(), QStringList(name));
}

TEST_F(JsonUserDefaultsTest, WritesNothingWhereNoReadableFileStands) {
    const QByteArray name = folder_.encoded(kName);
    const std::function<int()> obstacles[] = {
        [&] { return ::mkdir(name.constData(), 0700); },
        [&] { return ::mkfifo(name.constData(), 0600); },
        [&] { return ::symlink(name.constData(), name.constData()); },
        // Even the superuser can't read this one.
        [&] { return ::symlink("/proc/self/mem", name.constData()); }};
    ASSERT_TRUE(QDir().mkpath(folder_.path(QStringLiteral("app"))));
    for (const auto& putThere : obstacles) {
        struct stat before {};
        struct stat after {};
        ASSERT_EQ(putThere(), 0);
        ASSERT_EQ(::lstat(name.constData(), &before), 0);
        defaults_.set(kKey, true);
        defaults_.remove(kKey);
        EXPECT_EQ(stored(), "absent");
        ASSERT_EQ(::lstat(name.constData(), &after), 0);
        EXPECT_EQ(before.st_ino, after.st_ino);
        EXPECT_EQ(folder_.names(QStringLiteral("app")).size(), 1);
        ASSERT_EQ(::remove(name.constData()), 0);
    }
    folder_.write(QStringLiteral("file"), "in place of a folder");
    JsonUserDefaults(folder_.path(QStringLiteral("file/defaults.json"))).set(kKey, 1);
    EXPECT_EQ(folder_.read(QStringLiteral("file")), "in place of a folder");
}

TEST_F(JsonUserDefaultsTest, KeepsASymbolicLink) {
    const QString target = QStringLiteral("dotfiles/zenlot.json");
    for (const char* folder : {"app", "dotfiles"})
        ASSERT_TRUE(QDir().mkpath(folder_.path(QString::fromLatin1(folder))));
    ASSERT_EQ(::symlink("../dotfiles/zenlot.json", folder_.encoded(kName).constData()), 0);
    defaults_.set(kKey, 1);
    EXPECT_EQ(folder_.read(target).simplified(), R"({ "key": 1 })");
    folder_.write(target, "damaged");
    defaults_.set(kKey, 2);
    EXPECT_EQ(folder_.read(target).simplified(), R"({ "key": 2 })");
    EXPECT_EQ(folder_.read(target + QStringLiteral(".damaged")), "damaged");
    EXPECT_TRUE(QFileInfo(folder_.path(kName)).isSymLink());
}

} // namespace
} // namespace zenlot
