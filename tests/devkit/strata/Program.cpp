#include "tests/devkit/strata/Program.h"

#include <QCoreApplication>
#include <QDir>

namespace
{

constexpr int kPatienceMs = 100000;

} // namespace

Program::Program(const char* name, const QStringList& arguments, ChildProcess::Console console) : m_process(console)
{
    m_process.start(QDir(QCoreApplication::applicationDirPath()).filePath(QString::fromUtf8(name)), arguments);
    m_process.waitForStarted(kPatienceMs);
}

Program::~Program()
{
    m_process.kill();
    m_process.waitForFinished(kPatienceMs);
}

void Program::Send(const std::string& line)
{
    m_process.write((line + "\n").c_str());
    m_process.waitForBytesWritten(kPatienceMs);
}

std::string Program::Line()
{
    while (!m_process.canReadLine() && m_process.waitForReadyRead(kPatienceMs))
    {}
    return m_process.readLine().trimmed().toStdString();
}

int Program::ExitCode()
{
    m_process.closeWriteChannel();
    const bool ended = m_process.state() == QProcess::NotRunning || m_process.waitForFinished(kPatienceMs);
    return ended && m_process.exitStatus() == QProcess::NormalExit ? m_process.exitCode() : -1;
}

std::string Program::RestOfOutput()
{
    return m_process.readAllStandardOutput().toStdString();
}

std::string Program::Errors()
{
    return m_process.readAllStandardError().toStdString();
}
