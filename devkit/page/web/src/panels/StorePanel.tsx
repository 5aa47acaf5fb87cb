import { useState } from "preact/hooks";
import type { SettingType } from "../connection/Protocol";
import { brief } from "../logic/JsonText";
import { useFeed } from "../model/Feed";
import { attempt } from "../model/Notices";
import {
  enforceSetting, isEnforcedEntry, removeSetting, scopes, settingTypes, storedOnly, storeFilter, StoreTable,
  writeSetting, type Setting,
} from "../model/StoreTable";
import { Button } from "../parts/Button";
import { Facts } from "../parts/Facts";
import { Field, Form, named } from "../parts/Field";
import { Icon } from "../parts/Icon";
import { JsonEditor } from "../parts/JsonEditor";
import { Card, Page } from "../parts/Page";
import { Rows } from "../parts/Rows";
import { Select } from "../parts/Select";
import { Switch } from "../parts/Switch";
import { FilterField, Hold, Tools } from "../parts/Tools";

const heads = ["Setting", "Scope", "Type", "Value"];

function Cells({ table, setting }: { table: StoreTable; setting: Setting }) {
  const { entry, changes } = setting.state.value;
  const { scope, key, known } = setting;
  return (
    <>
      <td>
        <i key={changes} class={changes > 0 ? "flash" : undefined} />
        <Button quiet label={`${scope} ${key}`} onPress={() => (table.selected.value = setting)}>
          <span class="code">{key}</span>
        </Button>
        <span class="faint stored">{known?.purpose}</span>
      </td>
      <td>{scope}</td>
      <td>{entry?.found ? entry.type : known?.type}</td>
      <td>
        <span class={entry?.found ? "code" : "code faint"}>
          {entry?.found ? brief(entry.value) : known ? `${brief(known.otherwise)} by default` : "no value"}
        </span>
        {isEnforcedEntry(entry) && (
          <span class="tag">
            <Icon name="lock" />
            Enforced
          </span>
        )}
      </td>
    </>
  );
}

function Editor({ setting }: { setting: Setting }) {
  const { key, scope, known, state } = setting;
  const { entry } = state.value;
  const [type, setType] = useState<string>(entry?.found ? entry.type : (known?.type ?? "string"));
  return (
    <Card title={`${scope} ${key}`} class="selected">
      <p>{known?.purpose ?? "Not one of the feature's settings."}</p>
      <Facts
        facts={[
          { name: "In the store", value: entry?.found ? brief(entry.value) : "no value" },
          { name: "Default", value: known ? brief(known.otherwise) : "none" },
          { name: "Constraint word", value: entry?.constraints ?? 0 },
        ]}
      />
      <div class="fields">
        <Select label="Type" value={type} options={named(settingTypes)} onChoose={setType} />
      </div>
      <JsonEditor
        label="Value"
        value={entry?.found ? entry.value : known?.otherwise}
        action="Write"
        onChange={(value) => attempt(() => writeSetting(setting, type as SettingType, value))}
      />
      <Switch
        label="Enforced"
        lead="Nobody but the product changes the value."
        on={isEnforcedEntry(entry)}
        onMove={(on) => attempt(() => enforceSetting(setting, on))}
      />
      <div class="buttons">
        <Button disabled={!entry} onPress={() => removeSetting(setting)}>
          Remove
        </Button>
      </div>
    </Card>
  );
}

function OtherKey({ table }: { table: StoreTable }) {
  const [scope, setScope] = useState<string>("user");
  const [key, setKey] = useState("");
  return (
    <Form class="inline" onSubmit={() => key.trim() && table.open(scope, key.trim())}>
      <Select label="Scope" value={scope} options={named(scopes)} onChoose={setScope} />
      <Field label="Key" value={key} onType={setKey} />
      <button class="button">Open</button>
    </Form>
  );
}

export function StorePanel() {
  const [table] = useState(() => new StoreTable());
  useFeed(table.feed);
  const selected = table.selected.value;
  return (
    <Page title="Store" lead="The settings of the machine and of the user, whoever changes them.">
      <Tools>
        <FilterField
          label="Filter by key, scope or purpose"
          value={storeFilter.value}
          onFilter={(typed) => table.filter(typed)}
        />
        <label class="check">
          <input
            type="checkbox"
            checked={storedOnly.value}
            onChange={(event) => table.filter(storeFilter.value, event.currentTarget.checked)}
          />
          Only what is in the store
        </label>
        <span class="faint">
          {table.rows.value.length} of {table.count}
        </span>
        <Hold feed={table.feed} />
      </Tools>
      <Card class="settings">
        <Rows
          label="Settings"
          heads={heads}
          rows={table.rows.value}
          keyOf={(row) => row.id}
          render={(row) => <Cells table={table} setting={row} />}
          none="No setting matches."
          most={11}
        />
        <OtherKey table={table} />
      </Card>
      {selected && <Editor key={selected.id} setting={selected} />}
    </Page>
  );
}
