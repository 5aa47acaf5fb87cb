import { useEffect } from "preact/hooks";
import { tellDone, tellFailed } from "../model/Notices";
import { fire, onTrigger, variable } from "../model/Variables";
import { Button } from "../parts/Button";
import { OptionSwitches } from "../parts/OptionSwitches";
import { Card, Page } from "../parts/Page";
import { text } from "../text/Text";

const forced = variable<boolean>("@BrowserExtensions\\Data:force_extensions");
const forcedReadOnly = variable<boolean>("@BrowserExtensions\\Data:force_extensions_readonly");
const key = "windows.browsing_protection.skip_activate_extensions";
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
      <OptionSwitches
        options={[{ texts: t.forced, scope: "user", key, on: forced.value === true, locked: forcedReadOnly.value === true }]}
      />
      <Card class="line">
        <p>{t.reinstallLead}</p>
        <Button onPress={reinstall}>{t.reinstall}</Button>
      </Card>
    </Page>
  );
}
