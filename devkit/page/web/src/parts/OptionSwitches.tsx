import { attempt, tellFailed } from "../model/Notices";
import { reload } from "../model/PlugIn";
import { changing, settingsPages, withSettings } from "../model/Rights";
import { changeSetting } from "../model/Settings";
import { text } from "../text/Text";
import { Card } from "./Page";
import { Switch } from "./Switch";

export interface Option {
  /// Label and what it means.
  texts: readonly string[];
  scope: "system" | "user";
  key: string;
  on: boolean;
  locked: boolean;
  /// The page says the opposite of the setting.
  inverted?: boolean;
}

async function save({ scope, key, inverted = false }: Option, on: boolean): Promise<void> {
  const change = () => changeSetting(scope, key, "bool", on !== inverted);
  if (await withSettings(settingsPages.settings, change)) await reload();
  else tellFailed(text.value.refused);
}

/// Options that the plug-in shows and the suite itself saves.
export function OptionSwitches({ options }: { options: readonly Option[] }) {
  return (
    <Card class="rows">
      {options.map((option) => (
        <Switch
          key={option.key}
          label={option.texts[0]!}
          lead={option.texts[1]}
          on={option.on}
          locked={option.locked}
          busy={changing.value}
          onMove={(on) => attempt(() => save(option, on))}
        />
      ))}
    </Card>
  );
}
