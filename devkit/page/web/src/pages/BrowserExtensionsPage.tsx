import { useEffect } from "preact/hooks";
import { attempt, tellDone, tellFailed } from "../model/Notices";
import { changing } from "../model/Rights";
import { fire, onTrigger, variable } from "../model/Variables";
import { Card, Page } from "../parts/Page";
import { Switch } from "../parts/Switch";
import { text } from "../text/Text";
import { saveOption } from "./BrowsingProtectionPage";

const forced = variable<boolean>("@BrowserExtensions\\Data:force_extensions");
const forcedReadOnly = variable<boolean>("@BrowserExtensions\\Data:force_extensions_readonly");
const triggers = "@BrowserExtensions\\Triggers:";

async function reinstall(): Promise<void> {
  let shown = false;
  const end = onTrigger(`${triggers}show_reinstall_dialog`, () => (shown = true));
  try {
    await fire(`${triggers}reinstall`);
  } finally {
    end();
  }
  if (!shown) tellFailed(text.value.refused);
}

export function BrowserExtensionsPage() {
  const t = text.value.extensions;
  useEffect(() => onTrigger(`${triggers}show_reinstall_dialog`, () => tellDone(text.value.extensions.reinstalled)), []);
  return (
    <Page title={text.value.routes["browser-extensions"]} lead={t.lead}>
      <Card class="rows">
        <Switch
          label={t.forced[0]!}
          lead={t.forced[1]}
          on={forced.value === true}
          locked={forcedReadOnly.value === true}
          busy={changing.value}
          onMove={(on) =>
            attempt(() => saveOption("user", "windows.browsing_protection.skip_activate_extensions", on))
          }
        />
      </Card>
      <Card class="line">
        <p>{t.reinstallLead}</p>
        <button type="button" class="button" onClick={() => attempt(reinstall)}>
          {t.reinstall}
        </button>
      </Card>
    </Page>
  );
}
