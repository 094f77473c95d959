#include "platform/fake_user_defaults.h"
#include "platform/linux/json_user_defaults.h"
#include "support/temporary_folder.h"

#include <QTest>
#include <QThread>
#include <gtest/gtest.h>

#include <sys/stat.h>

#include <memory>

namespace zenlot {
namespace {

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

const QString kKey = u"key"_s;
const std::string kFileName = "app/defaults.json";

class JsonUserDefaultsTest : public testing::Test {
  protected:
    // The settings when the key has this value.
    const UserDefaults& with(const std::string& value) {
        folder_.write(kFileName, R"({"key":)" + value + "}");
        defaults_.read().waitForFinished();
        return defaults_;
    }
    // What another program would read.
    std::unique_ptr<JsonUserDefaults> another() const {
        auto defaults = std::make_unique<JsonUserDefaults>(path_);
        defaults->settle();
        return defaults;
    }

    TemporaryFolder folder_;
    QString path_ = QString::fromStdString(folder_.path() / kFileName);
    JsonUserDefaults defaults_{path_};
};

TEST_F(JsonUserDefaultsTest, KeepsWhatIsStoredLikeTheFake) {
    const QString text = u"Grüße \"\\/\n\u0001 👩‍💻"_s + QChar(u'\0') + QString(200, u'[');
    FakeUserDefaults fake;
    for (UserDefaults* defaults : std::initializer_list<UserDefaults*>{&defaults_, &fake}) {
        defaults->set(kKey, QList<qint64>{3, -1}); // which counts before it is written
        EXPECT_EQ(defaults->integers(kKey), (QList<qint64>{3, -1}));
        EXPECT_EQ(defaults->strings(kKey), std::nullopt);
        defaults->set(kKey, QStringList{text});
        EXPECT_EQ(defaults->strings(kKey), QStringList{text});
        defaults->set(kKey, true);
        EXPECT_TRUE(defaults->boolean(kKey));
    }
    defaults_.settle();
    EXPECT_TRUE(another()->boolean(kKey));
    EXPECT_EQ(std::filesystem::status(folder_.path() / "app").permissions(),
              std::filesystem::perms::owner_all);
}

TEST_F(JsonUserDefaultsTest, ReadsWhateverOthersWrote) {
    for (const char* value : {"true", "-1", "0.5", "18446744073709551615", "\"yes\"", "\" -007\""})
        EXPECT_TRUE(with(value).boolean(kKey)) << value;
    for (const char* value : {"false", "0", "0.0", "\"000\"", "\"--1\"", "[1]", "{}", "null"})
        EXPECT_FALSE(with(value).boolean(kKey)) << value;
    EXPECT_EQ(with("3").integer(kKey), 3);
    for (const std::string value : {"true", "3.0", "18446744073709551615", "\"3\"", "{}"}) {
        EXPECT_EQ(with(value).integer(kKey), std::nullopt) << value;
        EXPECT_EQ(with("[3," + value + "]").integers(kKey), std::nullopt) << value;
    }
    EXPECT_EQ(with("null").object(kKey), std::nullopt);
}

TEST_F(JsonUserDefaultsTest, ConcurrentWritersLoseNothing) {
    const auto write = [this](const QString& name) {
        for (int change = 0; change < 40; ++change)
            JsonUserDefaults(path_).set(name.arg(change), true);
    };
    const std::unique_ptr<QThread> first(QThread::create(write, u"a%1"_s));
    const std::unique_ptr<QThread> second(QThread::create(write, u"b%1"_s));
    for (const auto& thread : {&first, &second})
        (*thread)->start();
    for (const auto& thread : {&first, &second})
        (*thread)->wait();
    EXPECT_EQ(QByteArray::fromStdString(folder_.read(kFileName)).count("\": "), 80);
}

TEST_F(JsonUserDefaultsTest, WhatOthersPutThereSurvives) {
    const std::string valid = R"({"key":[3],"n":null,"o":[18446744073709551615,3.0]})";
    folder_.write("linked.json", valid);
    folder_.link(kFileName, "../linked.json");
    defaults_.set(kKey, QList<qint64>{3});
    defaults_.settle();
    defaults_.set(kKey, QStringList{QString(9000000, u'x')});
    defaults_.settle();
    EXPECT_EQ(folder_.read(kFileName), valid);
    defaults_.set(kKey, false);
    defaults_.settle();
    defaults_.remove(kKey);
    defaults_.settle();
    EXPECT_EQ(QByteArray::fromStdString(folder_.read("linked.json")).simplified().replace(" ", ""),
              R"({"n":null,"o":[18446744073709551615,3.0]})");

    const std::string tooDeep = R"({"key":)" + std::string(200, '[') + std::string(200, ']') + "}";
    const std::string tooLarge = R"({"key": ")" + std::string(8388608, 'x') + "\"}";
    std::string aside = "linked.json.damaged";
    for (const std::string& damaged : {std::string("[1]"), tooDeep, tooLarge}) {
        folder_.write(kFileName, damaged);
        defaults_.read().waitForFinished();
        EXPECT_EQ(defaults_.object(kKey), std::nullopt);
        defaults_.set(kKey, true);
        defaults_.settle();
        EXPECT_TRUE(defaults_.boolean(kKey));
        EXPECT_TRUE(folder_.read(aside) == damaged) << aside;
        aside = "linked.json.damaged-" + std::to_string(folder_.names().size() - 1);
    }
}

TEST_F(JsonUserDefaultsTest, NeitherWaitsForNorReplacesWhatIsNoFile) {
    std::filesystem::create_directory(folder_.path() / "app");
    ASSERT_EQ(::mkfifo((folder_.path() / kFileName).c_str(), 0600), 0);
    JsonUserDefaults defaults(path_, 1ms);
    defaults.set(kKey, true);
    defaults.settle();
    EXPECT_TRUE(std::filesystem::is_fifo(folder_.path() / kFileName));
    EXPECT_TRUE(defaults.isUnwritten() && defaults.boolean(kKey));
    // It is tried again.
    std::filesystem::remove(folder_.path() / kFileName);
    EXPECT_TRUE(QTest::qWaitFor([&] { return !defaults.isUnwritten(); }, 60'000));
    EXPECT_TRUE(another()->boolean(kKey));
}

// What was written whole before the damage counts, and is written anew.
TEST_F(JsonUserDefaultsTest, KeepsWhatADamagedFileStillSays) {
    const std::string good = R"({"a": [1, 2], "b": true, "s": "x", "o": {"p": [1]}, "key": )";
    const QByteArray expected = R"({"a":[1,2],"b":true,"o":{"p":[1]},"s":"x"})";
    for (const std::string& rest : {std::string("[3"), std::string("12"), std::string("\"\xFF\"}"),
                                    std::string(9, '\0'), std::string("tru")}) {
        folder_.write(kFileName, good + rest);
        const auto defaults = another();
        EXPECT_TRUE(defaults->wasDamaged() && defaults->boolean(u"b"_s));
        EXPECT_EQ(defaults->integers(u"a"_s), (QList<qint64>{1, 2}));
        EXPECT_EQ(defaults->object(kKey), std::nullopt) << rest;
        EXPECT_EQ(QByteArray::fromStdString(folder_.read(kFileName)).simplified().replace(" ", ""),
                  expected);
        EXPECT_EQ(folder_.read(kFileName + ".damaged"), good + rest);
        std::filesystem::remove(folder_.path() / (kFileName + ".damaged"));
    }
    EXPECT_FALSE(another()->wasDamaged());
}

} // namespace
} // namespace zenlot
