/// \file
/// Peers side by side: each does the same job, in turns, and what counts is the ratio of their times.
#pragma once

#include <functional>
#include <stdexcept>
#include <string>
#include <vector>

struct Options {
    std::string filter;   ///< only what has this text in its name; empty: everything
    std::string jsonPath; ///< empty: none
    unsigned rounds = 100;
};

/// A job that did not do what it should; the figures would be those of something else.
class BenchmarkFailure : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

inline void Require(bool condition, const char* what)
{
    if (!condition)
        throw BenchmarkFailure(what);
}

/// Makes the compiler believe that a value is used.
template <class TYPE> void Keep(const TYPE& value) { asm volatile("" : : "m"(value) : "memory"); }

/// One way of doing a job.
struct Peer {
    std::string name;
    std::function<void(unsigned count)> run; ///< does the job so many times

    /// \param operation does the job once.
    template <class OPERATION> Peer(const char* peerName, OPERATION operation)
        : name(peerName), run([operation](unsigned count) mutable {
              for (; count > 0; --count)
                  operation();
          })
    {
    }
};

/// What one peer's operation took in each round, in nanoseconds.
struct Samples {
    std::string name;
    std::vector<double> nanoseconds;
};

/// The range in which the ratio of the first peer to the second, the floor, must lie.
struct Limits {
    double least = 0; ///< 0: none
    double most = 0;  ///< 0: none
};

enum class Unit { nanoseconds, milliseconds };

/// Measures, prints a table as it goes, and keeps the results.
class Harness {
public:
    explicit Harness(const Options& options);

    unsigned GetRounds() const { return m_options.rounds; }
    /// Whether the user asked for a measurement of that name, "family: job".
    bool Wants(const std::string& name) const { return name.find(m_options.filter) != std::string::npos; }

    /// Measures peers that can run in this process. The first one is the library, the second its floor: the least that
    /// can do the job. In each round every peer has several short turns, the order reversed from one turn to the next,
    /// so that whatever else the machine does hits all of them alike.
    void Compare(const std::string& name, const std::vector<Peer>& peers, Limits limits = {});

    /// Adds what was measured elsewhere, with as many rounds for each peer. One peer alone is a plain figure.
    void Add(const std::string& name, const std::vector<Samples>& peers, Unit unit, Limits limits = {});

    /// Adds a line about something that could not be measured.
    void AddFailure(const std::string& what);

    /// Says how it went and writes the JSON file. \return the program's exit code: 1 when a ratio is outside its limits
    /// or something failed, 2 when nothing of the wanted name exists, else 0.
    int Finish() const;

private:
    struct Spread {
        double lowerQuartile, median, upperQuartile;
    };
    struct PeerResult {
        std::string name;
        Spread time;  ///< nanoseconds for an operation
        Spread ratio; ///< of the first peer to this one, round by round
    };
    struct Result {
        std::string name;
        Unit unit;
        Limits limits;
        std::vector<PeerResult> peers;
        const char* verdict; ///< "ok", "OVER", "UNDER", or "" without limits
        bool IsGood() const;
    };

    static Spread SpreadOf(std::vector<double> values);
    static const char* Judge(double ratio, const Limits& limits);
    static void Print(const Result& result);
    bool WriteJson() const;

    Options m_options;
    std::vector<Result> m_results;
    std::vector<std::string> m_failures;
};

/// Ticks of the performance counter, and what they are in nanoseconds.
long long Ticks();
double Nanoseconds(long long ticks);
