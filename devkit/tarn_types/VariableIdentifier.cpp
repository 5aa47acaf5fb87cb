#include "tarn/VariableIdentifier.h"

#include <QHash>

VariableIdentifier::VariableIdentifier() = default;

VariableIdentifier::VariableIdentifier(const char* id) : m_id(QString::fromUtf8(id)) {}

VariableIdentifier::VariableIdentifier(const QString& id) : m_id(id) {}

VariableIdentifier::VariableIdentifier(const VariableIdentifier& other) = default;

VariableIdentifier& VariableIdentifier::operator=(const VariableIdentifier& other) = default;

VariableIdentifier::~VariableIdentifier() = default;

bool VariableIdentifier::operator==(const VariableIdentifier& other) const
{
    return m_id == other.m_id;
}

bool VariableIdentifier::operator!=(const VariableIdentifier& other) const
{
    return m_id != other.m_id;
}

VariableIdentifier::operator QString()
{
    return m_id;
}

VariableIdentifier::operator QVariant()
{
    return m_id;
}

unsigned VariableIdentifier::GetHash() const
{
    return qHash(m_id);
}

QString VariableIdentifier::GetName() const
{
    const int colon = m_id.indexOf(QLatin1Char(':'));
    return colon < 0 ? QString() : m_id.mid(colon + 1);
}

QString VariableIdentifier::GetPackage() const
{
    const int start = m_id.startsWith(QLatin1Char('@')) ? 1 : 0;
    const int colon = m_id.indexOf(QLatin1Char(':'));
    return colon < 0 ? m_id.mid(start) : m_id.mid(start, colon - start);
}

QString VariableIdentifier::ToString() const
{
    return m_id;
}
