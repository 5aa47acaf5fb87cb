#pragma once

#include "tarn/VariableIdentifier.h"

/// UI variables that several handlers deal with.
namespace SharedVariables
{

inline const VariableIdentifier kLoadData("@Veridan\\Settings\\Triggers:load_data");
inline const VariableIdentifier kSave("@Veridan\\Settings\\Triggers:save");
inline const VariableIdentifier kShowWebsiteList("@ContentControl\\Triggers:show_website_list");
inline const VariableIdentifier kCloseWebsiteList("@ContentControl\\Triggers:close_website_list");
inline const VariableIdentifier kClearAllowedList("@ContentControl\\Triggers:clear_allowed_list");
inline const VariableIdentifier kAllowedWebsites("@ContentControl\\WebsiteRestrictions:allowed_websites");
inline const VariableIdentifier kLocalizationUpdated("@Localization\\MetaData\\Localization:updated");

} // namespace SharedVariables
