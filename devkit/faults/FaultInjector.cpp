#include "devkit/faults/FaultInjector.h"

#include <algorithm>
#include <utility>

namespace SuiteFaults
{

namespace
{

std::optional<std::wstring> KeyOf(const wchar_t* key)
{
    return key ? std::optional<std::wstring>(key) : std::nullopt;
}

} // namespace

FaultInjector::FaultInjector(std::vector<std::string_view> names) : m_names(std::move(names)), m_calls(m_names.size())
{}

std::optional<std::size_t> FaultInjector::NumberOf(const char* function) const
{
    if (!function)
        return kEvery;
    const auto name = std::find(m_names.begin(), m_names.end(), function);
    return name == m_names.end() ? std::nullopt : std::optional(static_cast<std::size_t>(name - m_names.begin()));
}

bool FaultInjector::Add(const SuiteFault& fault)
{
    const auto number = NumberOf(fault.function);
    if (!number)
        return false;
    const std::lock_guard lock(m_mutex);
    const uint32_t passing = fault.first == 0 ? 0 : fault.first - 1;
    m_faults.push_back({*number, KeyOf(fault.key), {fault.code, fault.carriedOut}, passing, fault.count});
    m_idle = false;
    return true;
}

bool FaultInjector::Remove(const char* function, const wchar_t* key)
{
    const auto number = NumberOf(function);
    if (!number)
        return false;
    const std::lock_guard lock(m_mutex);
    const auto same = [number = *number, key = KeyOf(key)](const Fault& fault) {
        return fault.function == number && fault.key == key;
    };
    m_faults.erase(std::remove_if(m_faults.begin(), m_faults.end(), same), m_faults.end());
    return true;
}

void FaultInjector::Clear()
{
    const std::lock_guard lock(m_mutex);
    m_faults.clear();
    m_calls.assign(m_names.size(), {});
    m_idle = false; // someone asks for the counts
}

void FaultInjector::Visit(SuiteFaultVisitor visitor, void* context)
{
    std::unique_lock lock(m_mutex);
    const std::vector<Fault> faults = m_faults;
    lock.unlock();
    for (const Fault& fault : faults)
    {
        const SuiteFault view{fault.function == kEvery ? nullptr : m_names[fault.function].data(),
                              fault.key ? fault.key->c_str() : nullptr,
                              fault.failure.code,
                              fault.passing + 1,
                              fault.left,
                              fault.failure.carriedOut};
        visitor(context, &view);
    }
}

std::optional<Failure> FaultInjector::Enter(std::size_t function, const wchar_t* key)
{
    const std::lock_guard lock(m_mutex);
    ++m_calls[function].all;
    for (auto fault = m_faults.begin(); fault != m_faults.end(); ++fault)
    {
        const bool matches =
            (fault->function == kEvery || fault->function == function) && (!fault->key || (key && *fault->key == key));
        if (!matches || (fault->passing != 0 && fault->passing-- != 0))
            continue;
        const Failure failure = fault->failure;
        if (fault->left != 0 && --fault->left == 0)
            m_faults.erase(fault);
        ++m_calls[function].failed;
        return failure;
    }
    return std::nullopt;
}

FaultInjector::Calls FaultInjector::CallsOf(const char* function)
{
    const auto number = NumberOf(function);
    const std::lock_guard lock(m_mutex);
    return number && *number != kEvery ? m_calls[*number] : Calls();
}

} // namespace SuiteFaults
