import { useState } from "preact/hooks";
import {
  clipboard, fillClipboard, makeEvent, metrics, metricsFeed, namedEvents, urls, urlsFeed, useLooks,
} from "../model/Activity";
import { useFeed } from "../model/Feed";
import { flyers, pressButton } from "../model/Flyers";
import { Button } from "../parts/Button";
import { Field, Form } from "../parts/Field";
import { Card, Page } from "../parts/Page";
import { Rows } from "../parts/Rows";

function Metrics() {
  const rows = metrics.value.map((row, i) => ({ number: i + 1, ...row }));
  return (
    <Rows
      label="Metrics"
      heads={["Code", "Name", "Payload"]}
      rows={rows}
      keyOf={(row) => row.number}
      render={({ code, name, payload, major }) => (
        <>
          <td>
            {code} {major && <span class="tag">major</span>}
          </td>
          <td class="code">{name}</td>
          <td class="code">{payload}</td>
        </>
      )}
      none="Nothing was recorded."
      rowHeight={34}
      follow
    />
  );
}

function Flyers() {
  return (
    <Rows
      label="Flyers"
      heads={["Title", "State", "Buttons"]}
      rows={flyers.value}
      keyOf={(row) => row.id}
      render={({ id, title, state, buttons }) => (
        <>
          <td>{title}</td>
          <td>{state}</td>
          <td class="actions">
            {buttons.map(({ caption, action }, i) => (
              <Button
                key={i}
                quiet
                label={`${caption}: ${action ?? "closes the flyer"}`}
                disabled={state !== "shown"}
                onPress={() => pressButton(id, i)}
              >
                {caption}
              </Button>
            ))}
          </td>
        </>
      )}
      none="No flyer was made."
      rowHeight={40}
    />
  );
}

interface LineFormProps {
  label: string;
  action: string;
  run(typed: string): Promise<void>;
}

function LineForm({ label, action, run }: LineFormProps) {
  const [typed, setTyped] = useState("");
  return (
    <Form class="inline" onSubmit={() => run(typed)}>
      <Field label={label} value={typed} onType={setTyped} />
      <button class="button">{action}</button>
    </Form>
  );
}

export function ActivityPanel() {
  useFeed(metricsFeed);
  useFeed(urlsFeed);
  useLooks();
  return (
    <Page title="Activity" lead="What the plug-in asks of the suite and of the desktop.">
      <Card title="Metrics">
        <Metrics />
      </Card>
      <Card title="Flyers">
        <Flyers />
      </Card>
      <Card title="Addresses opened">
        <ol class="code">
          {urls.value.map((url, i) => (
            <li key={i}>{url}</li>
          ))}
        </ol>
        {urls.value.length === 0 && <p class="faint">The plug-in opened none.</p>}
      </Card>
      <Card title="Clipboard">
        <p class="code whole">{clipboard.value || <span class="faint">It is empty.</span>}</p>
        <LineForm label="Text" action="Fill" run={fillClipboard} />
      </Card>
      <Card title="Named events">
        <ul>
          {namedEvents.value.map(({ name, signalled }) => (
            <li key={name}>
              <span class="code">{name}</span> {signalled ? "is signalled" : "is not signalled"}
            </li>
          ))}
        </ul>
        <LineForm label="Name" action="Make" run={makeEvent} />
      </Card>
    </Page>
  );
}
