#pragma once

#include "devkit/strata_cli/Item.h"

#include <optional>
#include <string>

namespace StrataCli
{

/// One scope of the store, opened with the product's rights.
class StoreScope
{
public:
    /// `scope`: "system", "user" or a SID. See IsOpen.
    explicit StoreScope(const std::string& scope);
    StoreScope(const StoreScope&) = delete;
    StoreScope& operator=(const StoreScope&) = delete;
    ~StoreScope();

    bool IsOpen() const { return m_handle != nullptr; }
    OrbStrataHandle Handle() const { return m_handle; }
    /// What opening, or the last call, answered.
    OrbStrataResult Result() const { return m_result; }

    std::optional<Item> Find(const std::string& key);
    /// Empty also if the call failed; see Result.
    Items List(const std::string& prefix);
    bool Write(const Items& items);
    bool Remove(const std::string& key);
    bool Constrain(const std::string& key, uint32_t constraints);

private:
    OrbStrataResult m_result = 0;
    OrbStrataHandle m_handle = nullptr;
};

/// Why a call answered `result`, as a sentence.
std::string Explain(OrbStrataResult result);

} // namespace StrataCli
