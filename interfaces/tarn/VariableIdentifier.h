#pragma once

#include <QMetaType>
#include <QString>
#include <QVariant>

#if defined(TARN_TYPES_LIBRARY)
#define TARN_TYPES_API Q_DECL_EXPORT
#else
#define TARN_TYPES_API Q_DECL_IMPORT
#endif

/// The name of a UI variable: "@" + package path (segments joined by a backslash) + ":" + name, such as
/// "@TimeLimit\Data:minutes_remaining". A value type; two identifiers are equal when their texts are.
class TARN_TYPES_API VariableIdentifier
{
public:
    VariableIdentifier();
    VariableIdentifier(const char* id); // UTF-8
    VariableIdentifier(const QString& id);
    VariableIdentifier(const VariableIdentifier& other);

    virtual VariableIdentifier& operator=(const VariableIdentifier& other);
    virtual ~VariableIdentifier();

    virtual bool operator==(const VariableIdentifier& other) const;
    virtual bool operator!=(const VariableIdentifier& other) const;
    virtual operator QString();
    virtual operator QVariant();

    virtual unsigned GetHash() const;
    virtual QString GetName() const;    ///< The text after the first colon; empty without a colon.
    virtual QString GetPackage() const; ///< The text between "@" and the first colon, or all after "@" without one.
    virtual QString ToString() const;   ///< The whole id, as it was given.

private:
    QString m_id;
};

Q_DECLARE_METATYPE(VariableIdentifier)
