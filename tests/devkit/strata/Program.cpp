#include "tests/devkit/strata/Program.h"

#include <QCoreApplication>
#include <QDir>

namespace
{

constexpr int PatienceMs = 100000;

} // namespace

Program::Program(const char* name, const QStringList& arguments, ChildProcess::Console console) : m_process(console)
{
    m_process.start(QDir(QCoreApplication::applicationDirPath()).filePath(QString::fromUtf8(name)), arguments);
    m_process.waitForStarted(PatienceMs);
}

Program::~Program()
{
    m_process.kill();
    m_process.waitForFinished(PatienceMs);
}

void Program::Send(const std::string& line)
{
    m_process.write((line + "\n").c_str());
    m_process.waitForBytesWritten(PatienceMs);
}

std::string Program::Line()
{
    while (!m_process.canReadLine() && m_process.waitForReadyRead(PatienceMs))
    {}
    return m_process.readLine().trimmed().toStdString();
}

int Program::ExitCode()
{
    m_process.closeWriteChannel();
    const bool ended = m_process.state() == QProcess::NotRunning || m_process.waitForFinished(PatienceMs);
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
