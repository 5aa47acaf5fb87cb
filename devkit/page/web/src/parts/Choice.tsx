import { useId } from "preact/hooks";

interface Props<Value extends string> {
  label: string;
  value: Value;
  /// Value, label, and what it means.
  options: readonly (readonly string[])[];
  onChoose(value: Value): void;
}

/// Two or three ways of which one holds, as radio buttons that say what they mean.
export function Choice<Value extends string>({ label, value, options, onChoose }: Props<Value>) {
  const id = useId();
  return (
    <fieldset class="choice">
      <legend>{label}</legend>
      {options.map(([option, title, lead]) => (
        <label key={option} class={option === value ? "option chosen" : "option"}>
          <input
            type="radio"
            name={id}
            checked={option === value}
            aria-labelledby={`${id}${option}`}
            aria-describedby={lead ? `${id}${option}lead` : undefined}
            onChange={() => onChoose(option as Value)}
          />
          <span>
            <span class="option-title" id={`${id}${option}`}>{title}</span>
            {lead && <span class="faint" id={`${id}${option}lead`}>{lead}</span>}
          </span>
        </label>
      ))}
    </fieldset>
  );
}
