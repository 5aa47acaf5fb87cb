interface Props<Value extends string> {
  label: string;
  class?: string;
  value: Value;
  /// Value and title.
  options: readonly (readonly [Value, string])[];
  /// The value is also the language of its title.
  inLanguage?: boolean;
  onChoose(value: Value): void;
}

export function Select<Value extends string>({ label, class: look, value, options, inLanguage, onChoose }: Props<Value>) {
  return (
    <label class={look}>
      {label}
      <select value={value} onChange={(event) => onChoose(event.currentTarget.value as Value)}>
        {options.map(([name, title]) => (
          <option key={name} value={name} lang={inLanguage ? name : undefined}>{title}</option>
        ))}
      </select>
    </label>
  );
}
