#pragma once

#include "plugin/ContentControl.h"
#include "tests/support/FakeClock.h"
#include "tests/support/PlatformFakes.h"
#include "tests/support/RecordingHost.h"
#include "tests/support/StoreTest.h"

#include <map>
#include <memory>
#include <string>
#include <vector>

inline constexpr const wchar_t* kSites = L"windows.browsing_protection.internal.sites.list";
inline constexpr const wchar_t* kTrigger = L"windows.browsing_protection.internal.time_limit_trigger";
inline constexpr const wchar_t* kBankingSession = L"windows.browsing_protection.internal.banking_session_open";

/// A day of a family's computer in this process: the whole plug-in on a real store in which no setting has its default,
/// pages that are used as people use them, and a service that goes about its work. Whatever fails on the way, the day
/// goes on.
class Day : public StoreTest
{
protected:
    using Strings = std::map<std::string, std::string>;

    Day();
    ~Day() override;

    /// From the plug-in's start to shortly before its end, the store settled after each step.
    void Live();

    /// One step of the day; the first is the plug-in's start.
    void Go(std::size_t index);
    static std::vector<const char*> StepNames();
    virtual void AfterStep(const char* /*name*/) {}

    /// Ends the plug-in: what waits to be saved is saved.
    void End();

    /// What is not shown as it would be if the plug-in had just been started: now, and when the pages are opened anew.
    Strings StaleOnThePages();
    Strings WrongOnThePages();

    /// What the main page's switches show, and what the store holds for them.
    Strings ShownSwitches() const;
    Strings StoredSwitches();

    RecordingHost& Host() { return *m_host; }

private:
    struct Step
    {
        const char* name;
        void (Day::*go)();
    };
    static const Step kSteps[];

    void Seed();
    void Start();
    void OpenSettings();
    void MoveSwitches();
    void ChooseAnotherLimit();
    void SaveSettings();
    void CloseSettings();
    void EditWebsites();
    void AllowAddress();
    void ReinstallExtensions();
    void HaveBankingSession();
    void WarnOfTheTime();
    void LockAndExtend();
    void ChangeSettings();

    FakeSessions m_sessions;
    FakeClock m_clock; // which stands still
    std::unique_ptr<RecordingHost> m_host;
    std::unique_ptr<ContentControl> m_plugIn;
};
