#pragma once

#include "tests/support/FakeClock.h"
#include "tests/support/PlatformFakes.h"
#include "tests/support/RecordingHost.h"
#include "tests/support/StoreTest.h"
#include "tests/support/UrlCatcher.h"

#include <functional>
#include <map>
#include <set>
#include <string>
#include <utility>

/// A place in the store: the scope's SID, and a key.
using Setting = std::pair<std::string, std::wstring>;

/// What was found out about the plug-in.
struct Findings
{
    struct Variable
    {
        std::set<std::string> types; ///< Of its values, as Qt names them.
        std::set<Setting> shows;
        std::set<Setting> saves;
    };

    std::map<QString, Variable> variables;
    std::map<std::string, RecordingHost::VariableUses> handlers;
    std::set<Setting> saved;     ///< Every setting that the plug-in wrote.
    StoreTest::Entries defaults; ///< Of every setting.
};

/// Finds out what the plug-in does by trying it: one short life of the whole plug-in for each setting that could be
/// different, and for each variable that a page could write.
class Exploration : public StoreTest
{
protected:
    Exploration();

    Findings Explore();

private:
    struct Life
    {
        QMap<QString, QVariant> values;
        std::set<QString> fired;
        std::set<Setting> written;
    };
    using Play = std::function<void(RecordingHost&)>;
    using Change = std::function<bool(const Setting& setting, Stored& entry)>;

    /// Starts the plug-in, lets `play` act as its pages, ends the plug-in, and puts the store back.
    Life Live(const Play& play);

    /// Notes what looks different when one setting is, for each that `change` changes in a store like this.
    void TrySettings(const Entries& present, const Change& change);

    /// Tries each switch that made no difference yet in stores in which any two other switches are once different: one
    /// that selects between them makes a difference there.
    void TrySelectors(const Entries& defaults, const Entries& others);

    /// Notes what is written when a page writes a variable and saves, for each that a handler could read.
    void TryVariables(const Entries& present);

    void Fill(const Entries& present);

    FakeClock m_clock;
    FakeSessions m_sessions;
    FakeToken m_token;
    FakeLauncher m_programs;
    UrlCatcher m_browser;
    Entries m_present;         // what both scopes hold
    std::set<QString> m_texts; // localised ones, which the host has
    Findings m_found;
};
