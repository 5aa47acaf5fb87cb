import assert from "node:assert/strict";
import { test } from "node:test";
import { parseSettings } from "web/logic/SettingsTable";
import defaults from "../../../../devkit/strata_cli/defaults.json";
import settingsPage from "../../../../docs/settings.md";

test("every setting is known from its documentation, with type, default and what it is for", () => {
  const known = parseSettings(settingsPage);
  const found = known.map(({ key, type, otherwise }) => [key, { type, value: otherwise, constraints: 0 }]);
  assert.deepEqual(Object.fromEntries(found), defaults);
  assert.deepEqual(known.filter(({ purpose }) => !purpose.endsWith(".")), []);
});
