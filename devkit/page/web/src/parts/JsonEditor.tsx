import type { ComponentChildren } from "preact";
import { useId, useState } from "preact/hooks";
import type { Json } from "../connection/Commands";
import { parseJson } from "../logic/JsonText";

interface Props {
  label: string;
  value: Json | undefined;
  onChange(value: Json): void;
  /// Of the button that hands the value over.
  action: string;
  /// More buttons.
  children?: ComponentChildren;
}

/// A JSON value as text that can be changed; Ctrl+Enter hands it over as the button does.
export function JsonEditor({ label, value, onChange, action, children }: Props) {
  const id = useId();
  const [typed, setTyped] = useState(JSON.stringify(value ?? null, null, 2));
  const parsed = parseJson(typed);
  const problem = "problem" in parsed ? parsed.problem : undefined;
  const submit = () => "value" in parsed && onChange(parsed.value);
  return (
    <form
      class="json-editor"
      onSubmit={(event) => {
        event.preventDefault();
        submit();
      }}
    >
      <label for={id}>{label}</label>
      <textarea
        id={id}
        class="code"
        rows={Math.min(typed.split("\n").length + 1, 16)}
        spellcheck={false}
        value={typed}
        aria-invalid={problem !== undefined}
        aria-describedby={problem && `${id}problem`}
        onInput={(event) => setTyped(event.currentTarget.value)}
        onKeyDown={(event) => event.key === "Enter" && event.ctrlKey && submit()}
      />
      {problem && (
        <p class="problem" id={`${id}problem`} role="alert">
          {problem}
        </p>
      )}
      <div class="buttons">
        {children}
        <button class="button primary" disabled={problem !== undefined}>
          {action}
        </button>
      </div>
    </form>
  );
}
