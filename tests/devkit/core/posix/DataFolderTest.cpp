#include "devkit/core/DataFolder.h"

#include <gtest/gtest.h>

namespace
{

/// An environment variable that has its former value again afterwards.
class Variable
{
public:
    explicit Variable(const char* name) : m_name(name), m_before(qgetenv(name)) {}
    ~Variable() { qputenv(m_name, m_before); }
    Variable(const Variable&) = delete;
    Variable& operator=(const Variable&) = delete;

private:
    const char* m_name;
    const QByteArray m_before;
};

TEST(DataFolderTest, UserWithoutAHomeHasNoFolderAndNotOneOfTheSystem)
{
    const Variable home("HOME");
    const Variable data("XDG_DATA_HOME");
    qunsetenv("XDG_DATA_HOME");
    qputenv("HOME", "/somewhere");
    EXPECT_EQ(DataFolder::DefaultPath(), "/somewhere/.local/share/veridan");
    for (const char* const none : {"", "/"})
    {
        qputenv("HOME", none);
        for (const char* const nowhere : {"", "relative"})
        {
            qputenv("XDG_DATA_HOME", nowhere);
            EXPECT_EQ(DataFolder::DefaultPath(), "") << '"' << none << "\" \"" << nowhere << '"';
        }
    }
    qputenv("XDG_DATA_HOME", "/elsewhere");
    EXPECT_EQ(DataFolder::DefaultPath(), "/elsewhere/veridan");
}

} // namespace
