#include "bench/plugin/LoadedPlugIn.h"
#include "bench/plugin/Roles.h"
#include "bench/support/InTurns.h"
#include "bench/support/OwnStore.h"

#include <QProcess>
#include <QTimer>

#include <atomic>
#include <chrono>
#include <iostream>
#include <string>
#include <vector>

// One change on its way from another process to the page. The writer lives through all samples: a program's own start
// takes far longer than what is to be measured.

namespace
{

using Clock = std::chrono::steady_clock; // the same in every process

constexpr const wchar_t* kKey = L"common.time.enabled";
constexpr int kChanges = 1000;

std::int64_t Now()
{
    return Clock::now().time_since_epoch().count();
}

double Seconds(std::int64_t from, std::int64_t to)
{
    return std::chrono::duration<double>(Clock::duration(to - from)).count();
}

/// The least that following can be: the store's own callback, which reads the value.
class BareFollower
{
public:
    BareFollower()
    {
        const auto arrived = [](void* context, const wchar_t* key, std::int32_t, const char*) {
            auto* const self = static_cast<BareFollower*>(context);
            OrbStrataResult result = ORB_STRATA_SUCCESS;
            OrbStrata_GetBool(self->m_scope.Handle(), key, false, &result);
            self->m_arrival = Now();
        };
        OrbStrata_Subscribe(m_scope.Handle(), kKey, ORB_STRATA_CHANGED, arrived, this, nullptr);
    }

    std::int64_t Arrival() const { return m_arrival; }

private:
    std::atomic<std::int64_t> m_arrival = 0;
    BareScope m_scope{""}; // first to go, and the subscription with it
};

/// The page, which waits for its switch.
class SwitchOnPage
{
public:
    explicit SwitchOnPage(PageHost& host) : m_host(host)
    {
        m_host.Observe([this](const QString& id, const QVariant& value) {
            if (id == m_switch && value == m_expected)
                m_arrival = Now();
        });
        m_wakeUp.start(100);
    }
    ~SwitchOnPage() { m_host.Observe(nullptr); }
    SwitchOnPage(const SwitchOnPage&) = delete;
    SwitchOnPage& operator=(const SwitchOnPage&) = delete;

    /// When it showed that; 0: not within some seconds.
    std::int64_t WaitFor(bool on)
    {
        m_expected = on ? QStringLiteral("On") : QStringLiteral("Off");
        m_arrival = 0;
        const auto deadline = Clock::now() + std::chrono::seconds(10);
        while (m_arrival == 0 && Clock::now() < deadline)
            QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
        return m_arrival;
    }

private:
    PageHost& m_host;
    const QString m_switch{"@TimeLimit\\Data:time_limit_state"};
    QVariant m_expected;
    std::int64_t m_arrival = 0;
    QTimer m_wakeUp; // so that waiting ends
};

void ChangeOfAnotherProcess(benchmark::State& state)
{
    const OwnStore store;
    store.Seed();
    const StoreLibrary library;
    const BareFollower bare;
    LoadedPlugIn plugIn;
    SwitchOnPage page(plugIn.host);
    QProcess writer;
    writer.setProcessChannelMode(QProcess::ForwardedErrorChannel);
    writer.start(QCoreApplication::applicationFilePath(), {QStringLiteral("--writer")});

    std::vector<std::int64_t> onPage;
    std::vector<std::int64_t> inCallback;
    for (auto _ : state)
    {
        for (int i = 0; i < kChanges; ++i)
        {
            const bool on = i % 2 == 0;
            writer.write(on ? "1\n" : "0\n");
            writer.waitForBytesWritten();
            onPage.push_back(page.WaitFor(on));
            inCallback.push_back(bare.Arrival());
            if (onPage.back() == 0)
                return state.SkipWithError("a change did not arrive");
        }
    }
    writer.closeWriteChannel();
    writer.waitForFinished();
    InTurns turns(state, "the store's callback, which reads the value", {0, 0, 10e-3});
    for (int i = 0; i < kChanges; ++i)
    {
        const std::int64_t start = writer.readLine().toLongLong();
        turns.AddBaseline(Seconds(start, inCallback[static_cast<std::size_t>(i)]));
        turns.AddSubject(Seconds(start, onPage[static_cast<std::size_t>(i)]));
    }
}

BENCHMARK(ChangeOfAnotherProcess)->Name("a change in another process")->Iterations(1)->UseManualTime();

} // namespace

int RunWriter()
{
    const StoreLibrary library;
    OrbStrataResult result = ORB_STRATA_SUCCESS;
    const OrbStrataHandle handle = library.control.OrbStrataControl_OpenProductHandle(L"", &result);
    std::vector<std::int64_t> starts;
    for (std::string line; std::getline(std::cin, line);)
    {
        starts.push_back(Now());
        OrbStrataEntry entry{kKey, ORB_STRATA_TYPE_BOOL, line == "1", nullptr, 0};
        const auto takeConstraints = [](void* context, const OrbStrataEntry* present) {
            static_cast<OrbStrataEntry*>(context)->constraints = present->constraints;
        };
        library.control.OrbStrataControl_Find(handle, kKey, takeConstraints, &entry);
        library.control.OrbStrataControl_Write(handle, &entry);
    }
    OrbStrata_CloseHandle(handle);
    for (const std::int64_t start : starts)
        std::cout << start << '\n';
    return 0;
}
