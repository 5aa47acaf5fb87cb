#pragma once

#include "delay_load/OrbStrataApi.h"
#include "devkit/strata/OrbStrataControl.h"

#include <QString>
#include <QTemporaryDir>

#include <string>
#include <vector>

/// The settings store's library, loaded for good with nothing around it: OrbStrata_* work from then on.
struct StoreLibrary
{
    StoreLibrary();

    /// What the development kit adds to the library.
    struct
    {
        NL_ORB_STRATA_CONTROL_FUNCTIONS(NL_SUITE_ENTRY)
    } control{};
};

/// A fresh folder with a settings store, which this process and those that it starts then use, and with a registry that
/// sends the log there.
class OwnStore
{
public:
    OwnStore();

    /// Gives the machine's scope and the calling user's every setting with its default, as `strata seed` does.
    void Seed() const;
    /// The same for one scope.
    void Seed(const char* sid) const;

private:
    QTemporaryDir m_folder;
};

/// A setting as the store's interface sees it.
struct BareSetting
{
    std::wstring key;
    OrbStrataType type;
};

/// Every setting that a seeded store holds.
std::vector<BareSetting> SeededSettings();

/// An open scope and nothing more. An empty SID is the calling user's.
class BareScope
{
public:
    explicit BareScope(const std::string& sid, bool elevated = false);
    ~BareScope() { OrbStrata_CloseHandle(m_handle); }
    BareScope(const BareScope&) = delete;
    BareScope& operator=(const BareScope&) = delete;

    OrbStrataHandle Handle() const { return m_handle; }

    /// Reads value and constraints of each, and drops them.
    void Read(const std::vector<BareSetting>& settings) const;

private:
    OrbStrataHandle m_handle;
};
