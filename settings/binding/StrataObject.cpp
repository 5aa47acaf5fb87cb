#include "settings/binding/StrataObject.h"

#include "logging/FunctionLog.h"
#include "settings/binding/StoreString.h"

namespace StrataSettings
{

namespace
{
constexpr FunctionLog kGetLog(L"StrataSettings::StrataObject::Get");
}

bool StrataObject::Get(const wchar_t* field, bool& value) const
{
    OrbStrataResult result = ORB_STRATA_INVALID_HANDLE;
    const bool read = OrbStrata_ObjectGetBool(m_object, field, false, &result);
    if (result != ORB_STRATA_SUCCESS)
    {
        LOG(kGetLog, 5, L"%s: Failed to get boolean for key %ls, error: %du", field, static_cast<int>(result));
        Missed(result);
        return false;
    }
    value = read;
    return true;
}

bool StrataObject::Get(const wchar_t* field, std::int64_t& value) const
{
    OrbStrataResult result = ORB_STRATA_INVALID_HANDLE;
    const std::int64_t read = OrbStrata_ObjectGetInt64(m_object, field, 0, &result);
    if (result != ORB_STRATA_SUCCESS)
    {
        LOG(kGetLog, 5, L"%s: Failed to get int64 for key %ls, error: %du", field, static_cast<int>(result));
        Missed(result);
        return false;
    }
    value = read;
    return true;
}

bool StrataObject::Get(const wchar_t* field, std::string& value) const
{
    OrbStrataResult result = ORB_STRATA_INVALID_HANDLE;
    const StoreString<char> read(OrbStrata_ObjectGetStringUtf8(m_object, field, "", &result));
    if (result != ORB_STRATA_SUCCESS || !read)
    {
        LOG(kGetLog, 5, L"%s: Failed to get string for key %ls, error: %du", field, static_cast<int>(result));
        Missed(result);
        return false;
    }
    value = read.get();
    return true;
}

void StrataObject::Missed(OrbStrataResult result) const noexcept
{
    m_readWhole = false;
    if (result == ORB_STRATA_SUCCESS)
        m_failure = ORB_STRATA_STORE_FAILED; // no text, although it was read
    else if (result != ORB_STRATA_NOT_FOUND && result != ORB_STRATA_WRONG_TYPE)
        m_failure = result;
}

bool StrataObject::Set(const wchar_t* field, bool value)
{
    return OrbStrata_ObjectSetBool(m_owned.get(), field, value) == ORB_STRATA_SUCCESS;
}

bool StrataObject::Set(const wchar_t* field, std::int64_t value)
{
    return OrbStrata_ObjectSetInt64(m_owned.get(), field, value) == ORB_STRATA_SUCCESS;
}

bool StrataObject::Set(const wchar_t* field, const std::string& value)
{
    return OrbStrata_ObjectSetStringUtf8(m_owned.get(), field, value.c_str()) == ORB_STRATA_SUCCESS;
}

bool StrataObject::PushBack(const StrataObject& record)
{
    return OrbStrata_ArrayPushBack(m_owned.get(), record.Raw()) == ORB_STRATA_SUCCESS;
}

} // namespace StrataSettings
