// Another process that uses the store: StoreHelper FILE COMMAND. Says on standard output what it did, a line each.

#include "devkit/strata/OrbStrataControl.h"

#include "tests/devkit/strata/Privileges.h"

#include "text/Utf.h"

#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <iostream>
#include <string>

namespace
{

constexpr const wchar_t* kSystem = L"S-1-5-18";

void Say(const std::string& line)
{
    std::cout << line << std::endl;
}

std::wstring Key(const char* prefix, int number)
{
    return Text::FromUtf8(prefix + std::to_string(number));
}

/// Whether a write is done, however long others keep the store busy.
template <typename F>
bool Done(const F& write)
{
    OrbStrataResult result = write();
    while (result == ORB_STRATA_BUSY)
        result = write();
    return result == ORB_STRATA_SUCCESS;
}

/// Writes "PREFIX0", "PREFIX1", ... and an object "PREFIXobject" beside each, and tells of each when it is done.
void Write(OrbStrataHandle store, const char* prefix, int count)
{
    for (int i = 0; i < count; ++i)
    {
        OrbStrataObject* object = OrbStrata_CreateObject();
        OrbStrata_ObjectSetInt64(object, L"n", i);
        const std::wstring objectKey = Key((std::string(prefix) + "object").c_str(), 0);
        const std::wstring key = Key(prefix, i);
        const bool written = Done([&] { return OrbStrata_SetObject(store, objectKey.c_str(), object); }) &&
                             Done([&] { return OrbStrata_SetInt32(store, key.c_str(), i); });
        OrbStrata_DeleteObject(object);
        if (!written)
            return Say("failed");
        Say(std::to_string(i));
    }
}

/// Writes each number that it is given under "answer", and gives it back.
void Echo(OrbStrataHandle store)
{
    for (std::string line; std::getline(std::cin, line);)
    {
        const int32_t number = std::atoi(line.c_str());
        Say(Done([&] { return OrbStrata_SetInt32(store, L"answer", number); }) ? line : "failed");
    }
}

/// Overwrites one key many times, telling only of the last.
void Hammer(OrbStrataHandle store, int count)
{
    for (int i = 1; i <= count; ++i)
        if (!Done([&] { return OrbStrata_SetInt32(store, L"hammered", i); }))
            return Say("failed");
    Say(Done([&] { return OrbStrataControl_Remove(store, L"doomed"); }) ? "done" : "failed");
}

/// Overwrites one long text many times.
void Fill(OrbStrataHandle store, const char* key, int count)
{
    for (int i = 0; i < count; ++i)
        OrbStrata_SetStringUtf8(store, Key(key, 0).c_str(), (std::string(20'000, 'x') + std::to_string(i)).c_str());
}

/// Whether the values that Write wrote are in the file.
void Check(OrbStrataHandle store, const char* prefix, int count)
{
    for (int i = 0; i < count; ++i)
        if (OrbStrata_GetInt32(store, Key(prefix, i).c_str(), -1, nullptr) != i)
            return Say(std::to_string(i));
    Say("all");
}

/// Opens the store and closes it, over and over, until it is killed, or for twenty seconds.
void KeepOpening()
{
    const auto end = std::chrono::steady_clock::now() + std::chrono::seconds(20);
    while (std::chrono::steady_clock::now() < end)
        OrbStrata_CloseHandle(OrbStrataControl_OpenProductHandle(kSystem, nullptr));
}

/// Opens each store that it is given, and tells how that went.
void Make()
{
    for (std::string line; std::getline(std::cin, line);)
    {
        OrbStrataControl_SetStoreFile(line.c_str());
        const OrbStrataHandle store = OrbStrataControl_OpenProductHandle(kSystem, nullptr);
        char* error = OrbStrataControl_LastError();
        Say(!store ? error : "made");
        OrbStrata_FreeString(error);
        OrbStrata_CloseHandle(store);
    }
}

void ReadOnly(OrbStrataHandle store)
{
    OrbStrataResult result = 0;
    const int32_t value = OrbStrata_GetInt32(store, L"key", -1, &result);
    Say(std::to_string(value));
    Say(std::to_string(OrbStrata_SetInt32(store, L"key", 2)));
    char* error = OrbStrataControl_LastError();
    Say(error);
    OrbStrata_FreeString(error);
}

} // namespace

int main(int argc, char** argv)
{
    if (argc < 3)
        return 2;
    const std::string command = argv[2];
    if (command == "readonly" && !DropPrivileges())
    {
        Say("privileged");
        return 0;
    }
    OrbStrataControl_SetStoreFile(argv[1]);
    if (command == "open" || command == "make")
    {
        command == "open" ? KeepOpening() : Make();
        return 0;
    }
    const OrbStrataHandle store = OrbStrataControl_OpenProductHandle(kSystem, nullptr);
    if (!store)
    {
        char* error = OrbStrataControl_LastError();
        Say(error);
        OrbStrata_FreeString(error);
        return 1;
    }
    command == "write"    ? Write(store, argv[3], std::atoi(argv[4]))
    : command == "check"  ? Check(store, argv[3], std::atoi(argv[4]))
    : command == "echo"   ? Echo(store)
    : command == "fill"   ? Fill(store, argv[3], std::atoi(argv[4]))
    : command == "hammer" ? Hammer(store, std::atoi(argv[3]))
                          : ReadOnly(store);
    OrbStrata_CloseHandle(store);
    OrbStrataControl_Shutdown();
    return 0;
}
