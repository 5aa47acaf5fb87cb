#pragma once

#include <string_view>
#include <vector>

/// One way into the product for hostile input. A target registers itself where it stands; the programs that run targets
/// (Fuzzer.cpp, Replay.cpp) find it in All().
class Target
{
public:
    /// Takes any bytes, and keeps nothing from one input to the next.
    using Run = void (*)(std::string_view input);

    /// `name` is also the name of the target's folder below corpus/.
    Target(const char* name, Run run);

    const char* Name() const { return m_name; }
    void operator()(std::string_view input) const { m_run(input); }

    static const std::vector<Target>& All();

private:
    const char* m_name;
    Run m_run;
};

/// Ends the program where the product does not keep `promise`.
void Require(bool kept, const char* promise);
