import { useState } from "preact/hooks";
import { levels, type LogLine } from "../logic/LogLine";
import { useFeed } from "../model/Feed";
import { logFilter, logLevel, LogTail } from "../model/LogTail";
import { Button } from "../parts/Button";
import { Card, Page } from "../parts/Page";
import { Rows } from "../parts/Rows";
import { Select } from "../parts/Select";
import { FilterField, Hold, Tools } from "../parts/Tools";

const heads = ["Time", "Level", "Message"];
const levelOptions = [
  ["0", "All"],
  ...levels.map((name, i) => [String(i + 1), i === 0 ? name : `${name} and graver`] as const),
] as const;

function Cells({ line: { time, level, message }, onSelect }: { line: LogLine; onSelect(): void }) {
  return (
    <>
      <td class="code">{time.slice(11)}</td>
      <td class={level > 0 && level <= 2 ? "grave" : undefined}>{time && levels[level - 1]}</td>
      <td>
        {message && (
          <Button quiet onPress={onSelect}>
            <span class="code">{message}</span>
          </Button>
        )}
      </td>
    </>
  );
}

export function LogPanel() {
  const [tail] = useState(() => new LogTail());
  const [selected, setSelected] = useState<LogLine | undefined>(undefined);
  useFeed(tail.feed);
  return (
    <Page title="Log" lead="What the plug-in writes to its log. The end stays in view until you scroll up.">
      <Tools>
        <FilterField label="Filter by text" value={logFilter.value} onFilter={(typed) => tail.filter(typed)} />
        <Select
          label="Level"
          value={String(logLevel.value)}
          options={levelOptions}
          onChoose={(level) => tail.filter(logFilter.value, Number(level))}
        />
        <span class="faint">
          {tail.rows.value.length} of {tail.count}
        </span>
        <Hold feed={tail.feed} />
      </Tools>
      <Card class="log">
        <Rows
          label="Log"
          heads={heads}
          rows={tail.rows.value}
          keyOf={(row) => row.number}
          render={(row) => <Cells line={row} onSelect={() => setSelected(row)} />}
          none="No line matches."
          rowHeight={26}
          most={24}
          follow
        />
        {selected && <p class="code whole">{selected.line}</p>}
      </Card>
    </Page>
  );
}
