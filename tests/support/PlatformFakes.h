#pragma once

#include "platform/DebugOutput.h"
#include "platform/LastError.h"
#include "platform/ProcessLauncher.h"
#include "platform/Registry.h"
#include "platform/Sessions.h"
#include "platform/Token.h"

#include <algorithm>
#include <cstring>
#include <map>
#include <mutex>
#include <string>
#include <tuple>
#include <utility>
#include <vector>

/// Stand-ins for the platform's services. Each is in place as long as it lives and is empty at first; a test sets what
/// it needs before the code under test asks.

template <class Service>
class FakeService : public Service
{
private:
    const Platform::ServiceReplacement<Service> m_replacement{*this};
};

class FakeRegistry : public FakeService<Platform::Registry>
{
public:
    using Root = Platform::RegistryRoot;

    void Set(Root root, const std::wstring& key, const std::wstring& value, std::uint32_t number)
    {
        m_numbers[{root, key, value}] = number;
    }
    void Set(Root root, const std::wstring& key, const std::wstring& value, const std::wstring& text)
    {
        m_texts[{root, key, value}] = text;
    }

    std::optional<std::uint32_t> ReadDword(Root root, const wchar_t* key, const wchar_t* value) override
    {
        const auto found = m_numbers.find({root, key, value});
        return found != m_numbers.end() ? std::optional(found->second) : std::nullopt;
    }
    std::optional<std::wstring> ReadString(Root root, const wchar_t* key, const wchar_t* value) override
    {
        const auto found = m_texts.find({root, key, value});
        return found != m_texts.end() ? std::optional(found->second) : std::nullopt;
    }

private:
    using Name = std::tuple<Root, std::wstring, std::wstring>;

    std::map<Name, std::uint32_t> m_numbers;
    std::map<Name, std::wstring> m_texts;
};

class FakeToken : public FakeService<Platform::Token>
{
public:
    bool administrator = true;
    bool unelevatedAdministrator = false;
    bool lowIntegrity = false;

    bool IsMemberOfBuiltinGroup(Platform::KernelHandle, std::uint32_t group) override
    {
        return administrator && group == kAdministrators;
    }
    bool IsUserMemberOfBuiltinGroup(Platform::KernelHandle, std::uint32_t group) override
    {
        return (administrator || unelevatedAdministrator) && group == kAdministrators;
    }
    bool IsLowIntegrity() override { return lowIntegrity; }
};

class FakeDebugOutput : public FakeService<Platform::DebugOutput>
{
public:
    void Write(const wchar_t* text) override
    {
        const std::lock_guard lock(m_lock);
        m_texts.emplace_back(text);
    }
    std::vector<std::wstring> Take()
    {
        const std::lock_guard lock(m_lock);
        return std::exchange(m_texts, {});
    }

private:
    std::mutex m_lock;
    std::vector<std::wstring> m_texts;
};

/// Starts nothing, and fails with error 2.
class FakeLauncher : public FakeService<Platform::ProcessLauncher>
{
public:
    std::wstring folder = L"C:\\Windows\\System32";
    std::wstring program;
    std::wstring commandLine;
    std::uint32_t flags = 0;
    std::wstring workingFolder = L"not called";

    std::wstring SystemFolder() override { return folder; }
    Platform::KernelHandle Start(const std::wstring& path, const std::wstring& line, std::uint32_t creationFlags,
                                 const wchar_t* working) override
    {
        program = path;
        commandLine = line;
        flags = creationFlags;
        workingFolder = working ? working : L"none";
        Platform::SetLastError(2);
        return nullptr;
    }
};

class FakeSessions : public FakeService<Platform::Sessions>
{
public:
    struct User
    {
        std::wstring name;
        std::wstring domain;
    };
    struct Answer
    {
        std::uint32_t error;
        std::uint32_t sidSize;
        std::uint32_t domainSize;
    };

    bool hasList = true;
    std::vector<Session> sessions;
    std::uint32_t console = kInvalid;
    std::map<std::uint32_t, User> users;
    std::map<std::wstring, std::vector<std::uint8_t>> accounts; ///< SIDs by domain\user.
    std::vector<Answer> answers;                                ///< Instead of looking up, one for each call.
    std::vector<std::wstring> asked;                            ///< The accounts that were looked up.
    std::vector<std::uint8_t> processUser;
    std::uint32_t processUserError = 0;
    std::uint32_t processSession = kInvalid;

    bool Enumerate(std::vector<Session>& result) override
    {
        result = sessions;
        return hasList;
    }
    std::uint32_t ActiveConsoleSession() override { return console; }
    std::wstring UserName(std::uint32_t session) override { return users[session].name; }
    std::wstring DomainName(std::uint32_t session) override { return users[session].domain; }

    std::uint32_t LookupAccount(const wchar_t* account, void* sid, std::uint32_t* sidSize, wchar_t* domain,
                                std::uint32_t* domainSize) override
    {
        asked.emplace_back(account);
        if (!answers.empty())
        {
            const Answer answer = answers.front();
            answers.erase(answers.begin());
            *sidSize = answer.sidSize;
            *domainSize = answer.domainSize;
            return answer.error;
        }
        const auto found = accounts.find(account);
        if (found == accounts.end())
            return kErrorNoneMapped;
        const auto needed = static_cast<std::uint32_t>(found->second.size());
        const bool fits = *sidSize >= needed && *domainSize >= 2;
        *sidSize = needed;
        *domainSize = 2;
        if (fits)
        {
            std::memcpy(sid, found->second.data(), needed);
            domain[0] = L'D';
            domain[1] = L'\0';
        }
        return fits ? 0 : kErrorInsufficientBuffer;
    }
    std::uint32_t ProcessUser(std::vector<std::uint8_t>& sid) override
    {
        sid = processUser;
        return processUserError;
    }
    bool ProcessSession(std::uint32_t& session) override
    {
        session = processSession != kInvalid ? processSession : session;
        return processSession != kInvalid;
    }
};
