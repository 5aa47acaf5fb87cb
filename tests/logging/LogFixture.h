#pragma once

#include "logging/LoggerWin.h"
#include "tests/support/FakeClock.h"
#include "tests/support/PlatformFakes.h"

#include <gmock/gmock.h>

#include <QTemporaryDir>

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

/// A log in a fresh folder, on a computer whose registry, clock, rights and sessions the test decides.
class LogFixture : public testing::Test
{
protected:
    LogFixture();

    static constexpr const wchar_t* kKey = L"SOFTWARE\\Norlane\\ORB\\Logging";
    static constexpr const wchar_t* kModuleKey = L"SOFTWARE\\Norlane\\ORB\\Logging\\NLCC\\Veridan";

    void SetLimits(std::uint32_t maximumKB, std::uint32_t rotationCount);
    void Initialize(unsigned flags = 0) { m_logger->Initialize(L"NLCC", L"Veridan", 4, flags); }

    /// The folder of the log files, and a path in it.
    std::wstring Folder() const;
    std::wstring FilePath(const std::wstring& name = L"Veridan.log") const;

    /// A file's text without its byte-order mark; "no mark" when it has none.
    static std::wstring Read(const std::wstring& path);
    static std::vector<std::wstring> Lines(const std::wstring& text);

    /// The messages of a file's lines: what follows the ids and the tag.
    std::vector<std::wstring> Messages(const std::wstring& name = L"Veridan.log") const;
    std::vector<std::wstring> FileNames() const;

    /// Makes a file with this text and no mark.
    void Put(const std::wstring& name, const std::string& bytes) const;

    QTemporaryDir m_folder;
    FakeRegistry m_registry;
    FakeToken m_token;
    FakeClock m_clock; // 2024-03-05 02:07:09.012, two hours behind local time
    FakeDebugOutput m_debugOutput;
    FakeSessions m_sessions;
    std::unique_ptr<NlOrbLogging::LoggerWin> m_logger = std::make_unique<NlOrbLogging::LoggerWin>();
};
