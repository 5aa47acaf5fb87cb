#pragma once

#include <QCoreApplication>

/// What a program that runs targets needs around it, for as long as it lives: the application, and a log that formats
/// every line and writes none.
class Surroundings
{
public:
    Surroundings(int& argc, char** argv);

private:
    QCoreApplication m_application;
};
