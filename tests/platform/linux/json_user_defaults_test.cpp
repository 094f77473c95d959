#include "platform/fake_user_defaults.h"
#include "platform/linux/json_user_defaults.h"
#include "support/temporary_folder.h"

#include <QDebug>
#include <gtest/gtest.h>

#include <sys/stat.h>

#include <thread>

namespace zenlot {
namespace {

using namespace Qt::StringLiterals;
template <typename Element>
using List = std::initializer_list<Element>;

const QString kKey = u"key"_s;
const std::string kFileName = "app/defaults.json";
constexpr auto kLargest = std::numeric_limits<quint64>::max();

// The value with the types of all its parts, since QVariant takes 3 and 3.0 for equal.
std::string typed(const std::optional<QVariant>& value) {
    return value ? QDebug::toString(*value).toStdString() : "absent";
}

class JsonUserDefaultsTest : public testing::Test {
  protected:
    const UserDefaults& with(const QVariant& value) {
        defaults_.set(kKey, value);
        return defaults_;
    }

    TemporaryFolder folder_;
    QString path_ = QString::fromStdString(folder_.path() / kFileName);
    JsonUserDefaults defaults_{path_};
};

TEST_F(JsonUserDefaultsTest, KeepsTypedValuesLikeTheFakeAndRefusesOthers) {
    const QString text = u"Grüße \"\\/\n\u0001 👩‍💻"_s + QChar(u'\0') + QString(200, u'[');
    const QVariantMap map{{u"a/b"_s, QVariantList{true, 1LL, 1.0, u"1"_s, QVariantMap()}}};
    FakeUserDefaults fake;
    for (UserDefaults* defaults : List<UserDefaults*>{&defaults_, &fake}) {
        for (const QVariant& value : List<QVariant>{true, -1LL, kLargest, 3.0, text, map}) {
            defaults->set(kKey, value);
            defaults->set(kKey, QVariantList{qInf()});
            EXPECT_EQ(typed(defaults->object(kKey)), typed(value));
        }
    }
}

TEST_F(JsonUserDefaultsTest, TypedReadings) {
    for (const QVariant& value : List<QVariant>{true, -1, 0.5, kLargest, u"yes"_s, u" -007"_s})
        EXPECT_TRUE(with(value).boolean(kKey)) << typed(value);
    for (const QVariant& value : List<QVariant>{false, 0, 0.0, u"000"_s, u"--1"_s, QVariantList{1}})
        EXPECT_FALSE(with(value).boolean(kKey)) << typed(value);
    for (const QVariant& value : List<QVariant>{true, 3.0, kLargest, kKey}) {
        EXPECT_EQ(with(value).integer(kKey), std::nullopt) << typed(value);
        EXPECT_EQ(with(QVariantList{3, value}).integers(kKey), std::nullopt) << typed(value);
    }
    EXPECT_EQ(with(QVariantList{kKey, 3}).strings(kKey), std::nullopt);
    EXPECT_EQ(with(QVariantList{3, -1}).integers(kKey), (QList<qint64>{3, -1}));
    EXPECT_EQ(with(QStringList{kKey}).strings(kKey), QStringList{kKey});
}

TEST_F(JsonUserDefaultsTest, ConcurrentWritersLoseNothing) {
    const auto write = [this](const QString& name) {
        for (int change = 0; change < 40; ++change)
            JsonUserDefaults(path_).set(name.arg(change), change);
    };
    std::thread first(write, u"a%1"_s);
    std::thread second(write, u"b%1"_s);
    first.join();
    second.join();
    EXPECT_EQ(QByteArray::fromStdString(folder_.read(kFileName)).count("\": "), 80);
}

TEST_F(JsonUserDefaultsTest, WhatOthersPutThereSurvives) {
    const std::string valid = R"({"key":3,"n":null,"o":[18446744073709551615,3.0]})";
    folder_.write("linked.json", valid);
    folder_.link(kFileName, "../linked.json");
    defaults_.set(kKey, 3);
    defaults_.set(kKey, QString(9000000, u'x'));
    EXPECT_EQ(folder_.read(kFileName), valid);
    defaults_.set(kKey, 3.0);
    defaults_.remove(kKey);
    EXPECT_EQ(QByteArray::fromStdString(folder_.read("linked.json")).simplified().replace(" ", ""),
              R"({"n":null,"o":[18446744073709551615,3.0]})");

    const std::string tooDeep = R"({"key":)" + std::string(200, '[') + std::string(200, ']') + "}";
    const std::string tooLarge = R"({"key": ")" + std::string(8388608, 'x') + "\"}";
    std::string aside = "linked.json.damaged";
    for (const std::string& damaged : {std::string("[1]"), tooDeep, tooLarge}) {
        folder_.write(kFileName, damaged);
        EXPECT_EQ(defaults_.object(kKey), std::nullopt);
        defaults_.set(kKey, true);
        EXPECT_TRUE(defaults_.boolean(kKey));
        EXPECT_TRUE(folder_.read(aside) == damaged) << aside;
        aside = "linked.json.damaged-" + std::to_string(folder_.names().size() - 1);
    }
}

TEST_F(JsonUserDefaultsTest, NeitherWaitsForNorReplacesWhatIsNoFile) {
    std::filesystem::create_directory(folder_.path() / "app");
    ASSERT_EQ(::mkfifo((folder_.path() / kFileName).c_str(), 0600), 0);
    defaults_.set(kKey, true);
    EXPECT_TRUE(std::filesystem::is_fifo(folder_.path() / kFileName));
}

} // namespace
} // namespace zenlot
