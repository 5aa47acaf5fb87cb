#include "devkit/core/Json.h"

#include <gtest/gtest.h>

#include <limits>

namespace
{

QVariant RoundTrip(const QVariant& value)
{
    const Json::Parsed parsed = Json::Parse(Json::Write(value));
    EXPECT_EQ(parsed.error, "");
    return parsed.value;
}

TEST(JsonTest, IntegersAreExactToTheLastBit)
{
    using Signed = std::numeric_limits<qlonglong>;
    for (const char* text : {"0", "-1", "2147483647", "-2147483648", "2147483648", "9007199254740993",
                             "9223372036854775807", "-9223372036854775808", "18446744073709551615"})
    {
        const Json::Parsed parsed = Json::Parse(text);
        EXPECT_NE(parsed.value.userType(), QMetaType::Double) << text;
        EXPECT_EQ(Json::Write(parsed.value), text);
    }
    EXPECT_EQ(RoundTrip(Signed::min()).toLongLong(), Signed::min());
    EXPECT_EQ(Json::Parse("-2147483648").value.userType(), QMetaType::Int);
    EXPECT_EQ(Json::Parse("18446744073709551616").value.userType(), QMetaType::Double);
}

TEST(JsonTest, FractionsStayFractions)
{
    for (const double number : {0.1, 1.0, -0.0, 1e300, 5e-324, 123456789012345680.0})
    {
        const QVariant back = RoundTrip(number);
        EXPECT_EQ(back.userType(), QMetaType::Double) << number;
        EXPECT_EQ(back.toDouble(), number);
    }
    EXPECT_EQ(Json::Write(std::numeric_limits<double>::infinity()), "null");
}

TEST(JsonTest, TextsOfEveryKindComeBack)
{
    const QString hostile = QStringLiteral("\"\\/\b\f\n\r\t\x01\x7f\u0080\u009f\u2028 \u00e4\u20ac") +
                            QString::fromUcs4(U"\U0001F600\U0010FFFF") + QChar(0) + QChar(0xFEFF);
    for (const QString& text :
         {QString(), hostile, QChar(QChar::ByteOrderMark) + hostile, QString(3'000'000, u'\u20ac')})
        EXPECT_TRUE(RoundTrip(text).toString() == text);
    EXPECT_EQ(Json::Parse(R"("\ud83d\ude00\u0041")").value, QString::fromUtf8("\xF0\x9F\x98\x80"
                                                                              "A"));
    EXPECT_FALSE(Json::Write(hostile).contains('\n'));
    EXPECT_TRUE(Json::Write(hostile).contains("\\u007f\\u0080\\u009f"));
    EXPECT_EQ(Json::Write(QString(QChar(0xD800))), "\"?\"");
}

TEST(JsonTest, ContainersNestAsDeepAsTheLimit)
{
    const QVariantMap object{{"", QVariantList{true, QVariant(), QVariantMap{}, QVariantList{}}}, {"b", "text"}};
    EXPECT_EQ(RoundTrip(object), object);

    const auto nested = [](int depth) { return QByteArray(depth, '[') + QByteArray(depth, ']'); };
    EXPECT_EQ(Json::Parse(nested(Json::kMaximumDepth)).error, "");
    EXPECT_NE(Json::Parse(nested(Json::kMaximumDepth + 1)).error, "");
    EXPECT_NE(Json::Parse(QByteArray(10'000'000, '[')).error, "");
}

TEST(JsonTest, WhatIsNotJsonIsRefusedWithItsPosition)
{
    for (const char* text :
         {"", "{", "[1,]", "{a:1}", "01", "1e999", "\"\\ud800\"", "\"\xed\xa0\x80\"", "1 2", "NaN", "\xef\xbb\xbf 1"})
    {
        const Json::Parsed parsed = Json::Parse(text);
        EXPECT_TRUE(parsed.error.startsWith("line ")) << text;
        EXPECT_FALSE(parsed.value.isValid()) << text;
    }
    EXPECT_TRUE(Json::Parse("{\n  \"a\": nope}").error.startsWith("line 2, column 9: "));
    EXPECT_FALSE(Json::Parse(QByteArray("1\0x", 3)).error.isEmpty());
}

} // namespace
