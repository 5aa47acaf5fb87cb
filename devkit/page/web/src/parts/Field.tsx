import type { ComponentChildren } from "preact";
import { useId } from "preact/hooks";
import { attempt } from "../model/Notices";

interface FormProps {
  class?: "inline" | "fields";
  /// What fails of it is told.
  onSubmit(): unknown;
  children: ComponentChildren;
}

export function Form({ class: look = "fields", onSubmit, children }: FormProps) {
  return (
    <form
      class={look}
      onSubmit={(event) => {
        event.preventDefault();
        attempt(async () => void (await onSubmit()));
      }}
    >
      {children}
    </form>
  );
}

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

export function Field({ label, type = "text", value, onType, suggestions, ...attributes }: FieldProps) {
  const list = useId();
  return (
    <label>
      {label}
      <input
        {...attributes}
        type={type}
        value={value}
        spellcheck={false}
        autoComplete="off"
        list={suggestions && list}
        onInput={(event) => onType(event.currentTarget.value)}
      />
      {suggestions && (
        <datalist id={list}>
          {suggestions.map(([each, meaning]) => (
            <option key={each} value={each} label={meaning} />
          ))}
        </datalist>
      )}
    </label>
  );
}

/// Options that are called what they are.
export function named(names: readonly string[]): (readonly [string, string])[] {
  return names.map((name) => [name, name]);
}
