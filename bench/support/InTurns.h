#pragma once

#include <benchmark/benchmark.h>

#include <chrono>
#include <cstdint>
#include <vector>

/// What a figure is held to. 0: nothing is asked for.
struct Wanted
{
    double ratio = 0;  ///< at most so many times the baseline
    double most = 0;   ///< at most so much at the median
    double most99 = 0; ///< at most so much for 99 of 100
};

/// Samples of a subject and of its baseline, the least that could do, taken in turns: a clock that wanders, or a
/// neighbour on the machine, meets both alike. The medians become counters of the benchmark, from which the table is
/// made.
class InTurns
{
public:
    /// `baseline` says what the baseline does, empty where there is none.
    InTurns(benchmark::State& state, const char* baseline, const Wanted& wanted = {});
    ~InTurns();
    InTurns(const InTurns&) = delete;
    InTurns& operator=(const InTurns&) = delete;

    /// A sample is the time of a run divided by so many units that it works off; 1 unless told.
    void SetUnits(std::int64_t subject, std::int64_t baseline)
    {
        m_units = static_cast<double>(subject);
        m_baselineUnits = static_cast<double>(baseline);
    }

    /// From now on each sample is the second one of two runs, so that it does not pay for what the other side left
    /// behind: memory to be sorted, a log of the store's to be worked off.
    void RunTwice() { m_twice = true; }

    /// One sample of each. They take turns in going first.
    template <class Subject, class Baseline>
    void Both(Subject&& subject, Baseline&& baseline)
    {
        const bool baselineFirst = m_subject.size() % 2 == 0;
        if (baselineFirst)
            AddBaseline(Time(baseline) / m_baselineUnits);
        AddSubject(Time(subject) / m_units);
        if (!baselineFirst)
            AddBaseline(Time(baseline) / m_baselineUnits);
    }

    /// One sample of a subject that has no baseline.
    template <class Subject>
    void Alone(Subject&& subject)
    {
        AddSubject(Time(subject) / m_units);
    }

    /// Samples that were taken otherwise: seconds, or bytes after CountBytes().
    void AddSubject(double sample);
    void AddBaseline(double sample) { m_baseline.push_back(sample); }
    void CountBytes() { m_bytes = true; }

private:
    template <class Run>
    double Time(Run&& run) const
    {
        if (m_twice)
            run();
        const auto start = std::chrono::steady_clock::now();
        run();
        return std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
    }

    benchmark::State& m_state;
    const Wanted m_wanted;
    double m_units = 1;
    double m_baselineUnits = 1;
    bool m_twice = false;
    bool m_bytes = false;
    std::vector<double> m_subject;
    std::vector<double> m_baseline;
};
