// The ids of UI variables, whatever text a page or the host makes one of.

#include "devkit/core/VariableHub.h"
#include "fuzz/Target.h"
#include "tarn/VariableIdentifier.h"

#include <QCoreApplication>

#include <string>

namespace
{

void RequireParts(const VariableIdentifier& id, const QString& text)
{
    const QString name = id.GetName();
    const QString package = id.GetPackage();
    Require(id.ToString() == text, "an id is the text that it was given");
    Require(!package.contains(QLatin1Char(':')), "a package ends at the first colon");
    const QString whole = text.contains(QLatin1Char(':')) ? package + QLatin1Char(':') + name : package;
    Require(whole == (text.startsWith(QLatin1Char('@')) ? text.mid(1) : text), "package and name make up the id");
}

void RequireEquality(const VariableIdentifier& id)
{
    VariableIdentifier copy;
    copy = id;
    Require(copy == id && !(copy != id) && copy.GetHash() == id.GetHash(), "a copy is equal");
    const VariableIdentifier longer(id.ToString() + QLatin1Char('x'));
    Require(longer != id && !(longer == id), "another text is another id");
}

void RequireOwnVariable(const QString& text)
{
    VariableHub hub([](const QString&) {});
    hub.Set(text, 1, Actor::Page);
    hub.Set(text + QLatin1Char('x'), 2, Actor::Page);
    Require(hub.Value(text) == 1, "each id has a value of its own");
    Require(hub.Variables(text).size() == 2, "a variable is listed under the beginning of its id");
}

const Target kTarget("variable_ids", [](std::string_view input) {
    const QString text = QString::fromUtf8(input.data(), static_cast<int>(input.size()));
    const VariableIdentifier id(text);
    RequireParts(id, text);
    RequireEquality(id);
    RequireOwnVariable(text);
    FindSlot(*QCoreApplication::instance(), std::string(input).c_str());
});

} // namespace
