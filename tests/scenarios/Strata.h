#pragma once

#include <QString>
#include <QStringList>

/// The store's command-line client in a process of its own, on the store of a data folder.
class Strata
{
public:
    explicit Strata(const QString& dataFolder) : m_dataFolder(dataFolder) {}

    /// What it printed, without the line's end. A failure fails the running test.
    QString Run(const QStringList& arguments) const;

    /// Writes a user's setting, or with "--scope", "system" the machine's.
    void Set(const QString& key, const QString& value, const QStringList& options = {}) const
    {
        Run(QStringList{"set", key, value} + options);
    }

private:
    const QString m_dataFolder;
};
