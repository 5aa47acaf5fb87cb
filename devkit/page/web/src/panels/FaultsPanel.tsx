import { useState } from "preact/hooks";
import type { FaultRow } from "../connection/Protocol";
import { clearFaults, faults, functions, libraryOf, setFault, takeBack } from "../model/Faults";
import { Button } from "../parts/Button";
import { Field, Form, named } from "../parts/Field";
import { Card, Page } from "../parts/Page";
import { Rows } from "../parts/Rows";
import { Select } from "../parts/Select";

/// Codes that the suite's libraries answer with.
const codes = [
  ["5", "access denied"],
  ["6", "invalid handle"],
  ["10", "not found"],
  ["87", "invalid argument"],
  ["110", "wrong type"],
  ["112", "the store failed"],
  ["170", "busy"],
] as const;

function NewFault() {
  const [name, setName] = useState("OrbStrata_SetBool");
  const [key, setKey] = useState("");
  const [code, setCode] = useState("112");
  const [count, setCount] = useState("1");
  const library = libraryOf(name);
  const fault: FaultRow = {
    library,
    function: name,
    code: Number(code),
    count: Number(count),
    ...(library === "store" && key.trim() && { key: key.trim() }),
  };
  return (
    <Form onSubmit={() => setFault(fault)}>
      <Select label="Function" value={name} options={named(Object.values(functions.value).flat())} onChoose={setName} />
      <Field label="Key" value={key} onType={setKey} placeholder="any" disabled={library !== "store"} />
      <Field label="Code" type="number" value={code} onType={setCode} suggestions={codes} required />
      <Field label="Calls (0: until it is cleared)" type="number" value={count} onType={setCount} min={0} required />
      <button class="button primary">Set fault</button>
    </Form>
  );
}

function Cells({ fault }: { fault: FaultRow }) {
  const { library, function: name = `any of ${library}`, key = "any", code, count } = fault;
  return (
    <>
      <td class="code">{name}</td>
      <td class="code">{key}</td>
      <td>{code}</td>
      <td>{count === 0 ? "until cleared" : count}</td>
      <td>
        <Button quiet label={`Take back ${name} ${key}`} onPress={() => takeBack(fault)}>
          Take back
        </Button>
      </td>
    </>
  );
}

export function FaultsPanel() {
  return (
    <Page title="Faults" lead="Calls of the plug-in that are answered with an error in place of being carried out.">
      <Card title="New fault">
        <NewFault />
      </Card>
      <Card title="Active faults" class="faults">
        <Rows
          label="Active faults"
          heads={["Function", "Key", "Code", "Calls left", "Actions"]}
          rows={faults.value.map((fault, i) => ({ number: i, fault }))}
          keyOf={({ number }) => number}
          render={({ fault }) => <Cells fault={fault} />}
          none="Nothing is made to fail."
          rowHeight={34}
        />
        <div class="buttons">
          <Button disabled={faults.value.length === 0} onPress={clearFaults}>
            Clear all
          </Button>
        </div>
      </Card>
    </Page>
  );
}
