#include "tests/devkit/strata/StoreFixture.h"

#include <limits>

using Kind = Opened::Kind;

namespace
{

class Objects : public StoreFixture
{
protected:
    /// The form in which the store keeps the text; empty if it is refused.
    static std::string Canonical(const std::string& text)
    {
        const Opened handle(Kind::Product);
        const OrbStrataEntry entry{L"object", ORB_STRATA_TYPE_OBJECT, 0, text.c_str(), 0};
        if (OrbStrataControl_Write(handle, &entry) != ORB_STRATA_SUCCESS)
            return {};
        const std::string stored = Stored(handle, L"object");
        return stored.substr(4, stored.size() - 6);
    }
};

TEST_F(Objects, TextFormIsReadStrictlyAndKeptInOneForm)
{
    EXPECT_EQ(Canonical(" [ ] "), "[]");
    EXPECT_EQ(Canonical("{ \"b\" : true , \"a\" : -0 }"), R"({"a":0,"b":true})");
    EXPECT_EQ(Canonical("[{}\n,{\"n\":-9223372036854775808},{\"n\":9223372036854775807}]"),
              R"([{},{"n":-9223372036854775808},{"n":9223372036854775807}])");
    EXPECT_EQ(Canonical(R"({"s":"\u00e4\ud83d\ude00\/\"\\\b\f\n\r\t\u0001"})"),
              "{\"s\":\"\xC3\xA4\xF0\x9F\x98\x80/\\\"\\\\\\b\\f\\n\\r\\t\\u0001\"}");
    for (const char* refused : {"", "5", "null", "[{}", "{}{}", "[1]", "[[]]", "{\"a\":null}", "{\"a\":{}}",
                                "{\"a\":[]}", "{\"a\":1.0}", "{\"a\":9223372036854775808}", "{\"a\":\"\\u0000\"}",
                                "{\"\\u0000\":1}", "{\"a\":\"\xFF\"}", "{\"a\":1,\"a\":1}", "\xEF\xBB\xBF{}"})
    {
        EXPECT_EQ(Canonical(refused), "") << refused;
        OrbStrataObject* object = OrbStrata_CreateObjectFromString(refused);
        EXPECT_EQ(object, nullptr) << refused;
        OrbStrata_DeleteObject(object);
    }
    const std::string deep(1000000, '[');
    EXPECT_EQ(Canonical(deep), "");
}

TEST_F(Objects, FieldsAnswerByNameAndType)
{
    OrbStrataObject* record = OrbStrata_CreateObjectFromString(R"({"b":true,"n":5,"s":"x"})");
    OrbStrataResult result = 0;
    EXPECT_EQ(OrbStrata_ObjectGetInt64(record, L"b", 7, &result), 7);
    EXPECT_EQ(result, OrbStrataResult{ORB_STRATA_WRONG_TYPE});
    EXPECT_TRUE(OrbStrata_ObjectGetBool(record, L"absent", true, &result));
    EXPECT_EQ(result, OrbStrataResult{ORB_STRATA_NOT_FOUND});
    EXPECT_EQ(OrbStrata_ObjectSetStringUtf8(record, L"s", "\xFF"), OrbStrataResult{ORB_STRATA_INVALID_ARGUMENT});
    EXPECT_EQ(OrbStrata_ObjectSetBool(record, L"n", false), 0U);
    EXPECT_FALSE(OrbStrata_ObjectGetBool(record, L"n", true, &result));
    EXPECT_EQ(result, 0U);
    EXPECT_EQ(OrbStrata_ObjectGetInt64(nullptr, L"n", 1, &result), 1);
    EXPECT_EQ(result, OrbStrataResult{ORB_STRATA_INVALID_HANDLE});
    OrbStrata_DeleteObject(record);
}

TEST_F(Objects, ArrayTakesCopiesOfRecordsOnly)
{
    OrbStrataObject* array = OrbStrata_CreateArray();
    OrbStrataObject* record = OrbStrata_CreateObject();
    EXPECT_EQ(OrbStrata_ArrayBegin(array), OrbStrata_ArrayEnd(array));
    OrbStrata_ObjectSetInt64(record, L"n", 1);
    EXPECT_EQ(OrbStrata_ArrayPushBack(array, record), 0U);
    OrbStrata_ObjectSetInt64(record, L"n", 2);
    EXPECT_EQ(OrbStrata_ObjectGetInt64(*OrbStrata_ArrayBegin(array), L"n", 0, nullptr), 1);
    EXPECT_EQ(OrbStrata_ArrayPushBack(array, array), OrbStrataResult{ORB_STRATA_WRONG_TYPE});
    EXPECT_EQ(OrbStrata_ArrayPushBack(record, record), OrbStrataResult{ORB_STRATA_WRONG_TYPE});
    EXPECT_EQ(OrbStrata_ArrayPushBack(array, nullptr), OrbStrataResult{ORB_STRATA_INVALID_HANDLE});
    EXPECT_EQ(OrbStrata_ObjectSetBool(array, L"n", true), OrbStrataResult{ORB_STRATA_WRONG_TYPE});
    OrbStrata_DeleteObject(record);
    OrbStrata_DeleteObject(array);
}

} // namespace
