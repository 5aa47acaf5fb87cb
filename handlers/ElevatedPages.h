#pragma once

#include "handlers/SettingsControllers.h"

#include <cstdint>
#include <memory>
#include <string>

/// The pages that need the user's agreement, and the elevated settings that they save through: those exist exactly as
/// long as such a page is open, or an action that needs them is under way. Logs as the main page's handler, whose
/// operations these are. UI thread only.
class ElevatedPages
{
public:
    /// A page, as bits of the mask of open ones.
    enum Page : std::uint32_t
    {
        AddWebsitesDialog = 0x08,
        WebsiteListPage = 0x20,
        SettingsUI = 0x02 | 0x10 | 0x40
    };

    /// `userSid` is whose settings the pages change.
    void SetUser(const std::string& userSid) { m_userSid = userSid; }

    /// Null while there is no need for them.
    const std::shared_ptr<ElevatedSettings>& Settings() const noexcept { return m_settings; }

    /// Makes sure that they are there, asking the user where they are not, or anew with `reopen`. False when the user
    /// declined.
    bool ShowUAC(bool reopen);

    void Add(std::uint32_t pages) { m_open |= pages; }
    bool IsAnyOpen() const noexcept { return m_open != 0; }
    bool IsAnyOpenBut(std::uint32_t pages) const noexcept { return (m_open & ~pages) != 0; }

    /// Tells that pages have closed; the last one takes the settings with it.
    void Remove(std::uint32_t pages);

    /// Drops the settings; ReleaseUnused() only while no page is open that would.
    void Release();
    void ReleaseUnused();

private:
    bool Open();

    std::string m_userSid;
    std::shared_ptr<ElevatedSettings> m_settings;
    std::uint32_t m_open = 0;
};
