import type { ComponentChildren } from "preact";
import { useId } from "preact/hooks";

interface FieldProps {
  label: string;
  type?: "text" | "number" | "time" | "date";
  value: string;
  onType(value: string): void;
  /// Values with what they mean; others can be typed, too.
  suggestions?: readonly (readonly [value: string, meaning?: string])[];
  placeholder?: string;
  min?: number;
  required?: boolean;
  disabled?: boolean;
}

/// A label and its input, beside each other in a form.
export function Field({ label, type = "text", value, onType, suggestions, ...attributes }: FieldProps) {
  const id = useId();
  return (
    <>
      <label for={id}>{label}</label>
      <input
        {...attributes}
        id={id}
        type={type}
        value={value}
        spellcheck={false}
        autoComplete="off"
        list={suggestions && `${id}list`}
        onInput={(event) => onType(event.currentTarget.value)}
      />
      {suggestions && (
        <datalist id={`${id}list`}>
          {suggestions.map(([each, meaning]) => (
            <option key={each} value={each} label={meaning} />
          ))}
        </datalist>
      )}
    </>
  );
}

interface SelectProps {
  label: string;
  value: string;
  onChoose(value: string): void;
  /// Its options.
  children: ComponentChildren;
}

export function Select({ label, value, onChoose, children }: SelectProps) {
  const id = useId();
  return (
    <>
      <label for={id}>{label}</label>
      <select id={id} value={value} onChange={(event) => onChoose(event.currentTarget.value)}>
        {children}
      </select>
    </>
  );
}

export function options(names: readonly string[]): ComponentChildren {
  return names.map((name) => <option key={name}>{name}</option>);
}
