/// \file
/// How the programs that measure a start report it: a line "name nanoseconds" for each step, the first one "main" and
/// the reading of the performance counter, in ticks, at which the main function began.
#pragma once

#include <windows.h>

#include <cstdio>

class StepClock {
public:
    StepClock()
    {
        QueryPerformanceFrequency(&m_frequency);
        m_steps[0] = {"main", static_cast<double>(Now())};
        m_last = Now();
    }

    /// Ends a step. \param name without spaces; must live on.
    void Step(const char* name)
    {
        const long long now = Now();
        if (m_count < kMostSteps)
            m_steps[m_count++] = {name,
                                  static_cast<double>(now - m_last) * 1e9 / static_cast<double>(m_frequency.QuadPart)};
        m_last = Now();
    }
    /// Prints what was measured; only now, for printing takes time.
    void Print() const
    {
        for (int i = 0; i < m_count; ++i)
            std::printf("%s %.0f\n", m_steps[i].name, m_steps[i].value);
    }

private:
    static constexpr int kMostSteps = 16;

    static long long Now()
    {
        LARGE_INTEGER now;
        QueryPerformanceCounter(&now);
        return now.QuadPart;
    }

    struct {
        const char* name;
        double value;
    } m_steps[kMostSteps];
    int m_count = 1;
    LARGE_INTEGER m_frequency;
    long long m_last;
};
