import type { Json } from "../connection/Commands";
import { differences } from "../logic/Difference";
import { brief } from "../logic/JsonText";

/// What is different in a value since the one before.
export function Differences({ before, now }: { before: Json | undefined; now: Json | undefined }) {
  const changes = before === undefined ? [] : differences(before, now);
  return (
    <section aria-label="Since the value before">
      <h3>Since the value before</h3>
      {changes.length === 0 && <p class="faint">{before === undefined ? "No other value was seen." : "No difference."}</p>}
      <ul class="differences code">
        {changes.map(({ path, before: one, now: other }) => (
          <li key={path}>
            {path && `${path}: `}
            <del>{brief(one) || "nothing"}</del> → <ins>{brief(other) || "nothing"}</ins>
          </li>
        ))}
      </ul>
    </section>
  );
}
