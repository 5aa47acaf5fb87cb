import type { FaultRow } from "../connection/Protocol";
import { clearFaults, faults } from "../model/Faults";
import { addressOf } from "../model/Route";
import { blockShown } from "../model/TimeLock";
import { Button } from "./Button";
import { Icon } from "./Icon";

function named(active: readonly FaultRow[]): string {
  const most = 3;
  const names = active.map(({ library, function: name, key }) => [name ?? library, key].filter(Boolean).join(" "));
  return names.slice(0, most).join(", ") + (names.length > most ? " …" : "");
}

/// What a developer should not forget, whichever page or panel is open.
export function InSight({ onPanel }: { onPanel: boolean }) {
  const active = faults.value;
  return (
    <div class="in-sight" role="status" lang="en">
      {onPanel && blockShown.value > 0 && (
        <p class="note warning">
          <Icon name="lock" />
          <span>The suite's pages are locked.</span>
          <a href={addressOf("main")}>Show</a>
        </p>
      )}
      {active.length > 0 && (
        <p class="note warning">
          <Icon name="warning" />
          <span>
            {active.length === 1 ? "1 fault is set: " : `${active.length} faults are set: `}
            <span class="code">{named(active)}</span>
          </span>
          <a href={addressOf("faults")}>Show</a>
          <Button quiet onPress={clearFaults}>
            Clear
          </Button>
        </p>
      )}
    </div>
  );
}
