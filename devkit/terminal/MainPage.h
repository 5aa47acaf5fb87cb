#pragma once

#include "devkit/terminal/TextStyle.h"

#include <QStringList>
#include <QVariantMap>

/// The main page as text: the protection status, the switches and the browser facts, each from its UI variable.
namespace MainPage
{

/// A switch of the page, by the name that a person types.
struct Switch
{
    const char* name;
    const char* title;
    const char* state;
    const char* status;
    const char* readOnly; // null where the page has no such mark
};

/// Null when there is no switch of that name.
const Switch* FindSwitch(const QString& name);
QStringList SwitchNames();

/// What a person calls a variable: its title on the page, else its id.
QString TitleOf(const QString& id);

/// `values` are those of the variables, by id.
QString Draw(const QVariantMap& values, const TextStyle& style);

} // namespace MainPage
