#include "settings/binding/ScopedSettings.h"
#include "settings/model/VdnSettings.h"
#include "tests/support/GeneratedFile.h"
#include "tests/support/StoreTest.h"

namespace
{

std::string Json(const StoreTest::Stored& value)
{
    switch (value.type)
    {
    case ORB_STRATA_TYPE_BOOL:
        return std::string(R"({"type":"bool","value":)") + (value.number ? "true" : "false");
    case ORB_STRATA_TYPE_INT32:
        return R"({"type":"int32","value":)" + std::to_string(value.number);
    case ORB_STRATA_TYPE_INT64:
        return R"({"type":"int64","value":)" + std::to_string(value.number);
    case ORB_STRATA_TYPE_STRING:
        return R"({"type":"string","value":")" + value.text + '"';
    case ORB_STRATA_TYPE_UTF8:
        return R"({"type":"utf8","value":")" + value.text + '"';
    default:
        return R"({"type":"object","value":)" + value.text;
    }
}

class DefaultsFileTest : public StoreTest
{};

} // namespace

TEST_F(DefaultsFileTest, HoldsTheDefaultOfEverySetting)
{
    {
        StrataSettings::ScopedSettings<VdnSettings> scope(kUser, L"safe", L"defaults", true);
        scope.Settings().MarkChanged();
        ASSERT_TRUE(scope.Save());
    }
    QByteArray expected = "{";
    for (const auto& [key, value] : Contents(kUser))
        expected += (expected.size() == 1 ? "\n  \"" : ",\n  \"") + QString::fromStdWString(key).toUtf8() +
                    "\": " + QByteArray::fromStdString(Json(value)) + ",\"constraints\":0}";
    expected += "\n}\n";

    ExpectGeneratedFile(QStringLiteral(VERIDAN_DEFAULTS_FILE), expected);
}
