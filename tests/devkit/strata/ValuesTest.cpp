#include "tests/devkit/strata/StoreFixture.h"

using Kind = Opened::Kind;

namespace
{

using Values = StoreFixture;

std::wstring WideString(OrbStrataHandle handle, const wchar_t* key)
{
    wchar_t* text = OrbStrata_GetString(handle, key, L"default", nullptr);
    const std::wstring copy = text;
    OrbStrata_FreeString(text);
    return copy;
}

TEST_F(Values, TextsOfAnyCharactersAndLengthAreReadBackFromTheFile)
{
    const std::wstring wide = L"quote \" back\\slash \n tab\t \x01 \u00e4\u4e16 \U0001F600";
    const std::string utf8 = "\" \\ \xF0\x9F\x98\x80 \xC3\xA4 \x7F";
    const std::string large(1024 * 1024, 'x');
    {
        const Opened writer(Kind::Elevated);
        ASSERT_EQ(OrbStrata_SetString(writer, L"wide", wide.c_str()), 0U);
        ASSERT_EQ(OrbStrata_SetString(writer, L"empty", L""), 0U);
        ASSERT_EQ(OrbStrata_SetStringUtf8(writer, L"utf8", utf8.c_str()), 0U);
        ASSERT_EQ(OrbStrata_SetStringUtf8(writer, L"large", large.c_str()), 0U);
    }
    const Opened reader(Kind::Normal);
    EXPECT_EQ(WideString(reader, L"wide"), wide);
    EXPECT_EQ(WideString(reader, L"empty"), L"");
    EXPECT_EQ(String(reader, L"utf8"), utf8);
    EXPECT_EQ(String(reader, L"large"), large);
}

TEST_F(Values, ScopesAreSeparateAndTheEmptySidIsTheCallersOwn)
{
    const Opened system(Kind::Product);
    const Opened own(Kind::Product, L"");
    const Opened other(Kind::Product, L"S-1-5-21-1-2-3-1001");
    OrbStrata_SetInt32(system, L"key", 1);
    OrbStrata_SetInt32(own, L"key", 2);
    EXPECT_EQ(OrbStrata_GetInt32(system, L"key", 0, nullptr), 1);
    EXPECT_EQ(OrbStrata_GetInt32(other, L"key", 0, nullptr), 0);

    std::string ownSid;
    OrbStrataControl_SetWriteObserver(
        [](void* context, const OrbStrataWrite* write) { *static_cast<std::string*>(context) = write->sid; }, &ownSid);
    OrbStrata_SetInt32(own, L"key", 3);
    OrbStrataControl_SetWriteObserver(nullptr, nullptr);
    const Opened bySid(Kind::Product, std::wstring(ownSid.begin(), ownSid.end()).c_str());
    EXPECT_EQ(OrbStrata_GetInt32(bySid, L"key", 0, nullptr), 3);
    for (const wchar_t* wrong : {L"S-1-x", L"S-1-5--18", L"S-1-5-"})
        EXPECT_EQ(Opened(Kind::Product, wrong).Result(), OrbStrataResult{ORB_STRATA_INVALID_ARGUMENT}) << wrong;
}

TEST_F(Values, ReadThatFailsGivesTheDefaultAndSaysWhy)
{
    const Opened handle(Kind::Product);
    OrbStrata_SetInt32(handle, L"number", 5);
    OrbStrata_SetConstraints(handle, L"constrained", 6);
    OrbStrataResult result = 0;
    EXPECT_EQ(OrbStrata_GetInt32(handle, L"absent", 42, &result), 42);
    EXPECT_EQ(result, OrbStrataResult{ORB_STRATA_NOT_FOUND});
    EXPECT_EQ(OrbStrata_GetInt64(handle, L"number", 42, &result), 42);
    EXPECT_EQ(result, OrbStrataResult{ORB_STRATA_WRONG_TYPE});
    EXPECT_EQ(String(handle, L"number", &result), "default");
    EXPECT_EQ(result, OrbStrataResult{ORB_STRATA_WRONG_TYPE});
    EXPECT_EQ(OrbStrata_GetObject(handle, L"number", &result), nullptr);
    EXPECT_EQ(result, OrbStrataResult{ORB_STRATA_WRONG_TYPE});
    EXPECT_TRUE(OrbStrata_GetBool(handle, L"constrained", true, &result));
    EXPECT_EQ(result, OrbStrataResult{ORB_STRATA_NOT_FOUND});
    EXPECT_EQ(OrbStrata_GetConstraints(handle, L"constrained", &result), 6U);
    EXPECT_EQ(result, 0U);
    EXPECT_EQ(OrbStrata_GetConstraints(handle, L"absent", &result), 0U);
    EXPECT_EQ(result, OrbStrataResult{ORB_STRATA_NOT_FOUND});
    EXPECT_EQ(OrbStrata_GetString(handle, L"absent", nullptr, &result), nullptr);
}

TEST_F(Values, ConstraintsAndValueAreWrittenIndependentlyAndRemovedTogether)
{
    const Opened handle(Kind::Product);
    OrbStrata_SetConstraints(handle, L"key", 7);
    OrbStrata_SetInt32(handle, L"key", 5);
    EXPECT_EQ(Stored(handle, L"key"), "2 5  7");
    OrbStrata_SetConstraints(handle, L"key", 2);
    EXPECT_EQ(Stored(handle, L"key"), "2 5  2");
    const OrbStrataEntry value{L"key", ORB_STRATA_TYPE_INT64, 6, nullptr, 9};
    EXPECT_EQ(OrbStrataControl_WriteValue(handle, &value), 0U);
    EXPECT_EQ(Stored(handle, L"key"), "3 6  2");
    EXPECT_EQ(OrbStrataControl_Remove(handle, L"key"), 0U);
    EXPECT_EQ(Stored(handle, L"key"), "");
    EXPECT_EQ(OrbStrataControl_Remove(handle, L"key"), OrbStrataResult{ORB_STRATA_NOT_FOUND});
}

TEST_F(Values, WriteIfAbsentLeavesAloneWhatIsThere)
{
    const Opened handle(Kind::Product);
    OrbStrata_SetInt32(handle, L"present", 5);
    OrbStrata_SetConstraints(handle, L"constrained", 2);
    const OrbStrataEntry defaults[] = {{L"absent", ORB_STRATA_TYPE_INT32, 1, nullptr, 4},
                                       {L"constrained", ORB_STRATA_TYPE_INT32, 1, nullptr, 4},
                                       {L"present", ORB_STRATA_TYPE_INT32, 1, nullptr, 4}};
    uint32_t written = 9;
    EXPECT_EQ(OrbStrataControl_WriteIfAbsent(handle, defaults, 3, &written), 0U);
    EXPECT_EQ(written, 2U);
    EXPECT_EQ(Stored(handle, L"absent"), "2 1  4");
    EXPECT_EQ(Stored(handle, L"constrained"), "2 1  2");
    EXPECT_EQ(Stored(handle, L"present"), "2 5  0");
    EXPECT_EQ(OrbStrataControl_WriteIfAbsent(handle, defaults, 3, &written), 0U);
    EXPECT_EQ(written, 0U);
}

TEST_F(Values, KeyThatIsIllFormedIsRefusedAndNotTakenForAnother)
{
    const Opened handle(Kind::Product);
    const wchar_t illFormed[] = {static_cast<wchar_t>(0xD800), 0};
    OrbStrata_SetInt32(handle, L"\uFFFD", 5);
    OrbStrataResult result = 0;
    EXPECT_EQ(OrbStrata_GetInt32(handle, illFormed, 0, &result), 0);
    EXPECT_EQ(result, OrbStrataResult{ORB_STRATA_INVALID_ARGUMENT});
    EXPECT_EQ(OrbStrataControl_List(handle, illFormed, nullptr, nullptr), OrbStrataResult{ORB_STRATA_INVALID_ARGUMENT});
    EXPECT_EQ(OrbStrata_Subscribe(
                  handle, illFormed, ORB_STRATA_CHANGED, [](void*, const wchar_t*, int32_t, const char*) {}, nullptr,
                  &result),
              nullptr);
    EXPECT_EQ(result, OrbStrataResult{ORB_STRATA_INVALID_ARGUMENT});
}

TEST_F(Values, WriteOfWhatNoValueCanBeIsRefusedAndChangesNothing)
{
    const Opened handle(Kind::Product);
    OrbStrata_SetStringUtf8(handle, L"key", "kept");
    const wchar_t loneSurrogate[] = {static_cast<wchar_t>(0xD800), L'x', 0};
    for (const char* text : {"\xFF", "\xC0\x80", "\xED\xA0\x80", "\xF4\x90\x80\x80", "\xC3"})
        EXPECT_EQ(OrbStrata_SetStringUtf8(handle, L"key", text), OrbStrataResult{ORB_STRATA_INVALID_ARGUMENT}) << text;
    EXPECT_EQ(OrbStrata_SetStringUtf8(handle, L"key", nullptr), OrbStrataResult{ORB_STRATA_INVALID_ARGUMENT});
    EXPECT_EQ(OrbStrata_SetString(handle, L"key", loneSurrogate), OrbStrataResult{ORB_STRATA_INVALID_ARGUMENT});
    EXPECT_EQ(OrbStrata_SetObject(handle, L"key", nullptr), OrbStrataResult{ORB_STRATA_INVALID_HANDLE});
    EXPECT_EQ(OrbStrata_SetBool(handle, L"", true), OrbStrataResult{ORB_STRATA_INVALID_ARGUMENT});
    EXPECT_EQ(OrbStrata_SetBool(handle, nullptr, true), OrbStrataResult{ORB_STRATA_INVALID_ARGUMENT});

    const OrbStrataEntry refused[] = {
        {L"key", ORB_STRATA_TYPE_BOOL, 2, nullptr, 0},
        {L"key", ORB_STRATA_TYPE_INT32, int64_t{1} << 31, nullptr, 0},
        {L"key", ORB_STRATA_TYPE_OBJECT, 0, "{\"a\":1.5}", 0},
        {L"key", ORB_STRATA_TYPE_UTF8, 0, nullptr, 0},
        {L"key", static_cast<OrbStrataType>(7), 0, nullptr, 0},
    };
    for (const OrbStrataEntry& entry : refused)
    {
        const OrbStrataEntry batch[] = {{L"other", ORB_STRATA_TYPE_BOOL, 1, nullptr, 0}, entry};
        EXPECT_EQ(OrbStrataControl_WriteAll(handle, batch, 2), OrbStrataResult{ORB_STRATA_INVALID_ARGUMENT});
    }
    EXPECT_EQ(Stored(handle, L"key"), "5 0 kept 0");
    EXPECT_EQ(Stored(handle, L"other"), "");
}

TEST_F(Values, HandleThatIsNotOpenIsRefused)
{
    Opened closed(Kind::Product);
    const OrbStrataHandle stale = closed;
    closed.Close();
    const Opened later(Kind::Product);
    for (const OrbStrataHandle handle : {stale, OrbStrataHandle{}})
    {
        OrbStrataResult result = 0;
        EXPECT_EQ(OrbStrata_GetInt32(handle, L"key", 3, &result), 3);
        EXPECT_EQ(result, OrbStrataResult{ORB_STRATA_INVALID_HANDLE});
        EXPECT_EQ(OrbStrata_SetInt32(handle, L"key", 3), OrbStrataResult{ORB_STRATA_INVALID_HANDLE});
        OrbStrata_CloseHandle(handle);
    }
    EXPECT_EQ(OrbStrataControl_OpenHandles(), 1U);
}

TEST_F(Values, ListGivesThePrefixInOrderOfKeys)
{
    const Opened handle(Kind::Product);
    for (const wchar_t* key : {L"b.2", L"a", L"b.10", L"b", L"c", L"b/"})
        OrbStrata_SetBool(handle, key, true);
    std::wstring keys;
    OrbStrataControl_List(
        handle, L"b.",
        [](void* context, const OrbStrataEntry* entry) {
            static_cast<std::wstring*>(context)->append(entry->key).append(L" ");
        },
        &keys);
    EXPECT_EQ(keys, L"b.10 b.2 ");
}

} // namespace
