import { useId } from "preact/hooks";
import { text } from "../text/Text";
import { Icon } from "./Icon";

interface Props {
  label: string;
  lead?: string | undefined;
  on: boolean;
  /// Set by the administrator: shown, and not to be moved.
  locked?: boolean;
  busy?: boolean;
  onMove(on: boolean): void;
}

export function Switch({ label, lead, on, locked = false, busy = false, onMove }: Props) {
  const id = useId();
  const t = text.value;
  const move = () => {
    if (!locked && !busy) onMove(!on);
  };
  return (
    <div class="switch-row" onClick={move}>
      <div class="switch-text">
        <span class="switch-label" id={`${id}label`}>{label}</span>
        {lead && <span class="faint" id={`${id}lead`}>{lead}</span>}
        {locked && (
          <span class="tag" id={`${id}lock`}>
            <Icon name="lock" />
            {t.lockedByAdministrator}
          </span>
        )}
      </div>
      <button
        type="button"
        class="switch"
        role="switch"
        aria-checked={on}
        aria-labelledby={`${id}label`}
        aria-describedby={`${lead ? `${id}lead` : ""} ${locked ? `${id}lock` : ""}`.trim() || undefined}
        aria-disabled={locked || busy}
        aria-busy={busy}
      >
        <i class="knob" />
      </button>
    </div>
  );
}
