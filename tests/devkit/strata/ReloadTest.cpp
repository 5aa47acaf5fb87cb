// Loads the library as a plug-in would: this program is not linked to it.

#include "devkit/strata/OrbStrataControl.h"

#include <gtest/gtest.h>

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QLibrary>
#include <QTemporaryDir>

#include <atomic>
#include <chrono>
#include <thread>

namespace
{

template <class Function>
Function* Resolve(QLibrary& library, const char* name)
{
    return reinterpret_cast<Function*>(library.resolve(name));
}

#define RESOLVE(library, result, name, parameters) const auto name = Resolve<result parameters>(library, #name)

void NL_SUITE_CALL Count(void* context, const wchar_t* /*key*/, int32_t /*changeType*/, const char* /*text*/)
{
    ++*static_cast<std::atomic<int>*>(context);
}

/// What the system tells of this process; empty where it does not tell in this way.
bool IsMapped(const QString& library)
{
    QFile maps(QStringLiteral("/proc/self/maps"));
    return maps.open(QIODevice::ReadOnly) && maps.readAll().contains(library.toUtf8());
}

int Threads()
{
    return QDir(QStringLiteral("/proc/self/task")).entryList(QDir::Dirs | QDir::NoDotAndDotDot).size();
}

/// A thread that was waited for is still listed for a moment.
bool ThreadsBecome(int expected)
{
    const auto deadline = std::chrono::steady_clock::now() + std::chrono::seconds(20);
    while (Threads() != expected && std::chrono::steady_clock::now() < deadline)
        std::this_thread::yield();
    return Threads() == expected;
}

void UseOnce(QLibrary& library, const QString& file, std::atomic<int>& delivered)
{
    RESOLVE(library, void, OrbStrataControl_SetStoreFile, (const char*));
    RESOLVE(library, OrbStrataHandle, OrbStrata_OpenHandle,
            (const wchar_t*, const wchar_t*, const wchar_t*, OrbStrataResult*));
    RESOLVE(library, OrbStrataHandle, OrbStrataControl_OpenProductHandle, (const wchar_t*, OrbStrataResult*));
    RESOLVE(library, OrbStrataSubscription, OrbStrata_Subscribe,
            (OrbStrataHandle, const wchar_t*, int32_t, OrbStrataCallback, void*, OrbStrataResult*));
    RESOLVE(library, int32_t, OrbStrata_GetInt32, (OrbStrataHandle, const wchar_t*, int32_t, OrbStrataResult*));
    RESOLVE(library, OrbStrataResult, OrbStrata_SetInt32, (OrbStrataHandle, const wchar_t*, int32_t));
    RESOLVE(library, bool, OrbStrataControl_WaitForDelivery, (uint32_t));
    RESOLVE(library, void, OrbStrata_CloseHandle, (OrbStrataHandle));
    RESOLVE(library, void, OrbStrataControl_Shutdown, (void));

    OrbStrataControl_SetStoreFile(file.toUtf8().constData());
    const auto reader = OrbStrata_OpenHandle(L"safe", L"S-1-5-18", L"test", nullptr);
    const auto writer = OrbStrataControl_OpenProductHandle(L"S-1-5-18", nullptr);
    OrbStrata_Subscribe(reader, L"key", ORB_STRATA_CHANGED, Count, &delivered, nullptr);
    const int32_t before = OrbStrata_GetInt32(reader, L"key", 0, nullptr);
    EXPECT_EQ(OrbStrata_SetInt32(writer, L"key", before + 1), 0U);
    EXPECT_TRUE(OrbStrataControl_WaitForDelivery(20000));
    OrbStrata_CloseHandle(reader);
    OrbStrata_CloseHandle(writer);
    OrbStrataControl_Shutdown();
}

TEST(Reload, LibraryComesAndGoesTwentyTimesWithoutLeavingAThread)
{
    const QTemporaryDir folder;
    const QString path = QCoreApplication::applicationDirPath() + QStringLiteral("/nl_orb_strata_32");
    std::thread([] {}).join(); // what the first thread of a process brings with it stays
    const int threads = Threads();
    std::atomic<int> delivered = 0;
    for (int round = 1; round <= 20; ++round)
    {
        QLibrary library(path);
        ASSERT_TRUE(library.load()) << library.errorString().toStdString();
        UseOnce(library, folder.filePath(QStringLiteral("store.db")), delivered);
        EXPECT_EQ(delivered, round);
        EXPECT_TRUE(ThreadsBecome(threads));
        ASSERT_TRUE(library.unload());
        EXPECT_FALSE(IsMapped(QStringLiteral("nl_orb_strata_32")));
    }
}

} // namespace
