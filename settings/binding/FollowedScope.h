#pragma once

#include "settings/binding/Listener.h"
#include "settings/binding/ScopedSettings.h"

#include <optional>

namespace StrataSettings
{

/// A scope that follows the store as long as it has a handle.
template <class Tree>
class FollowedScope : public ScopedSettings<Tree>
{
public:
    using ScopedSettings<Tree>::ScopedSettings;

    /// Starts to follow the store, telling `observer` (may be null); does nothing without a handle or the second time.
    void Follow(Observer* observer)
    {
        if (m_listener || !this->EffectiveHandle())
            return;
        m_listener.emplace(*this, observer);
        m_listener->Subscribe();
    }

    /// Loads once; later calls load only what could not be read so far. Following starts first, so that no change falls
    /// between.
    bool LoadOnce(Observer* observer)
    {
        Follow(observer);
        if (m_loaded)
            this->Settings().LoadUnread(this->EffectiveHandle());
        else
            m_loaded = this->Load();
        return m_loaded;
    }

    bool IsLoaded() const noexcept { return m_loaded; }

private:
    bool m_loaded = false;
    std::optional<Listener<ScopedSettings<Tree>>> m_listener;
};

} // namespace StrataSettings
