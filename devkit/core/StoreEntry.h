#pragma once

#include "devkit/core/Result.h"
#include "devkit/strata/OrbStrataControl.h"

#include <QByteArray>
#include <QStringList>

#include <deque>
#include <map>
#include <string>
#include <vector>

/// One entry of the store: a value with its type, a constraint word, or both.
struct StoreEntry
{
    OrbStrataType type = ORB_STRATA_TYPE_NONE;
    QVariant value; // bool, int or qlonglong, QString; for objects QVariantMap or QVariantList
    quint32 constraints = 0;

    bool HasValue() const { return type != ORB_STRATA_TYPE_NONE; }
    /// "bool", "int32", "int64", "string", "utf8", "object"; "none" for constraints without a value.
    QString TypeName() const;

    static StoreEntry FromC(const OrbStrataEntry& entry);

    /// `type` is one of the type names but "none". A value of another kind or out of the type's range is refused,
    /// never converted.
    static Result<StoreEntry> Make(const QString& type, const QVariant& value);
    /// What a person wrote, as a value of the type; without a type, as the one that it looks like.
    static Result<StoreEntry> FromWord(const QString& type, const QString& word);
    /// Reads what Describe() or Export() gave; "constraints" may be missing for 0.
    static Result<StoreEntry> FromJson(const QVariant& json);

    /// The names that Make() takes, joined by "|".
    static constexpr const char* kTypeNames = "bool|int32|int64|string|utf8|object";

    /// {"found", "type", "value", "constraints"}, as the protocol has it.
    QVariantMap Describe() const;
    /// "enforced, constraints 3": what people read of the constraint word; empty for 0.
    static QString ConstraintsString(quint32 constraints);
};

/// Entries as the store's functions take them; they must outlive the call.
class EntriesForC
{
public:
    explicit EntriesForC(const std::map<QString, StoreEntry>& entries);
    EntriesForC(const EntriesForC&) = delete;
    EntriesForC& operator=(const EntriesForC&) = delete;

    const OrbStrataEntry* Data() const { return m_entries.data(); }
    uint32_t Count() const { return static_cast<uint32_t>(m_entries.size()); }

private:
    std::vector<OrbStrataEntry> m_entries;
    std::deque<std::wstring> m_keys; // deques: the entries point into them
    std::deque<QByteArray> m_texts;
};
