#include "devkit/core/StoreCommands.h"

#include "devkit/core/StoreAccess.h"

namespace
{

Result<StoreAccess::Entries> EntriesFrom(const QVariantMap& json)
{
    using Read = Result<StoreAccess::Entries>;
    StoreAccess::Entries entries;
    for (auto it = json.begin(); it != json.end(); ++it)
    {
        const Result<StoreEntry> entry = StoreEntry::FromJson(it.value());
        if (!entry.Ok())
            return Read::Failure(QStringLiteral("\"%1\": %2").arg(it.key(), entry.error), entry.kind);
        if (it.key().isEmpty() || it.key().contains(QChar(0)))
            return Read::Failure(QStringLiteral("A key is text without NUL characters that is not empty."),
                                 FailureKind::Refused);
        entries.emplace(it.key(), entry.value);
    }
    return {entries, {}};
}

} // namespace

std::vector<Command> StoreCommands(StoreAccess& store)
{
    using namespace CommandWords;
    const Parameter scope{"scope", Kind::Name, kRequired, nullptr, "user"};
    const Parameter key{"key", Kind::Name};
    const Parameter type{"type", Kind::String, kRequired, StoreEntry::kTypeNames, ""};
    return {
        {"store.get",
         "what the store holds under a key",
         {scope, key},
         [&store](const Arguments& arguments) {
             const Result<StoreEntry> entry = store.Get(arguments.String("scope"), arguments.String("key"));
             return entry.Ok() ? Answer{entry.value.Describe(), {}} : Answer::Failure(entry);
         },
         Command::Turn::Any},
        {"store.set",
         "changes a setting as the product does",
         {scope, key, type, {"value", Kind::Typed}},
         [&store](const Arguments& arguments) {
             const Result<StoreEntry> entry = StoreEntry::Make(arguments.String("type"), arguments.Value("value"));
             return entry.Ok() ? store.Set(arguments.String("scope"), arguments.String("key"), entry.value)
                               : Answer::Failure(entry);
         }},
        {"store.remove",
         "removes a value and its constraint word",
         {scope, key},
         [&store](const Arguments& arguments) {
             return store.Remove(arguments.String("scope"), arguments.String("key"));
         }},
        {"store.constrain",
         "replaces the constraint word of a key",
         {scope, key, {"constraints", Kind::Constraints}},
         [&store](const Arguments& arguments) {
             return store.Constrain(arguments.String("scope"), arguments.String("key"),
                                    static_cast<quint32>(arguments.Number("constraints")));
         }},
        {"store.list",
         "every entry whose key begins so",
         {scope, {"prefix", Kind::String, kOptional}},
         [&store](const Arguments& arguments) {
             const auto entries = store.List(arguments.String("scope"), arguments.String("prefix"));
             if (!entries.Ok())
                 return Answer::Failure(entries);
             QVariantMap list;
             for (const auto& [name, entry] : entries.value)
                 list.insert(name, entry.Describe());
             return Answer{list, {}};
         },
         Command::Turn::Any},
        {"store.write",
         "writes entries by key, all or none; with absent only where there is no value",
         {scope, {"entries", Kind::Entries}, {"absent", Kind::Bool, kOptional}},
         [&store](const Arguments& arguments) {
             const auto entries = EntriesFrom(arguments.Value("entries").toMap());
             if (!entries.Ok())
                 return Answer::Failure(entries);
             return arguments.Bool("absent") ? store.WriteIfAbsent(arguments.String("scope"), entries.value)
                                             : store.Write(arguments.String("scope"), entries.value);
         }},
    };
}

Answer CompleteStoreSet(StoreAccess& store, QVariantMap& request, bool& isNew)
{
    const QString typeName = QStringLiteral("type");
    const QString valueName = QStringLiteral("value");
    if (!request.contains(typeName))
    {
        const Result<StoreEntry> present = store.Get(request.value(QStringLiteral("scope")).toString(),
                                                     request.value(QStringLiteral("key")).toString());
        if (!present.Ok())
            return Answer::Failure(present);
        isNew = !present.value.HasValue();
        if (!isNew)
            request.insert(typeName, present.value.TypeName());
    }
    const Result<StoreEntry> entry =
        StoreEntry::FromWord(request.value(typeName).toString(), request.value(valueName).toString());
    if (!entry.Ok())
        return Answer::Failure(entry);
    request.insert(typeName, entry.value.TypeName());
    request.insert(valueName, entry.value.value);
    return {};
}
