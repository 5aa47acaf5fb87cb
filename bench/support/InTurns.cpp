#include "bench/support/InTurns.h"

#include <algorithm>

namespace
{

/// With fewer samples the last of a hundred is a matter of luck.
constexpr std::size_t kEnoughFor99 = 200;

/// The sample that `share` of them do not exceed.
double Quantile(std::vector<double>& samples, double share)
{
    const auto at = static_cast<std::size_t>(share * static_cast<double>(samples.size() - 1));
    const auto position = samples.begin() + static_cast<std::ptrdiff_t>(at);
    std::nth_element(samples.begin(), position, samples.end());
    return *position;
}

} // namespace

InTurns::InTurns(benchmark::State& state, const char* baseline, const Wanted& wanted) : m_state(state), m_wanted(wanted)
{
    m_state.SetLabel(baseline);
}

InTurns::~InTurns()
{
    if (m_subject.empty())
        return;
    m_state.counters[m_bytes ? "bytes" : "seconds"] = Quantile(m_subject, 0.5);
    if (m_subject.size() >= kEnoughFor99)
        m_state.counters["p99"] = Quantile(m_subject, 0.99);
    if (!m_baseline.empty())
        m_state.counters["baseline"] = Quantile(m_baseline, 0.5);
    m_state.counters["wanted_ratio"] = m_wanted.ratio;
    m_state.counters["wanted"] = m_wanted.most;
    m_state.counters["wanted_p99"] = m_wanted.most99;
}

void InTurns::AddSubject(double sample)
{
    m_subject.push_back(sample);
    m_state.SetIterationTime(m_bytes ? 0 : sample);
}
