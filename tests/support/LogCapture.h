#pragma once

#include <iosfwd>
#include <string>
#include <vector>

/// One line that was logged: its level, and its message in UTF-8.
struct LogLine
{
    int level;
    std::string text;

    bool operator==(const LogLine& other) const { return level == other.level && text == other.text; }
};

std::ostream& operator<<(std::ostream& stream, const LogLine& line);

/// The log of a test program: every line of every level is kept in memory instead of a file. A line of level 1 or 2
/// that a test has neither expected nor taken fails that test at its end, and so does an expected line that did not
/// come. Each test begins with an empty log. Any thread.
class LogCapture
{
public:
    /// Announces a line that the test is about to cause, once for each time that it comes.
    static void Expect(int level, std::string text);

    /// All lines since the test began or since the last call, in order. What is taken is for the test to judge.
    static std::vector<LogLine> Take();

    /// The same, but leaves out lines of a level above `highest`; these are dropped.
    static std::vector<LogLine> Take(int highest);

    /// Lines above this level are filtered from now on, until the test ends; 6 at its beginning.
    static void SetThreshold(int level);

    /// Puts the capturing logger in place and joins the running test program. Called by the main function; a test that
    /// replaces the logger itself calls it to come back.
    static void Install();
};
