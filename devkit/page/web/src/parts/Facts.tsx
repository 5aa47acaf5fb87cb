export interface Fact {
  name: string;
  value: string | number;
  tone?: "good" | "bad" | "faint" | undefined;
}

export function Facts({ facts }: { facts: readonly Fact[] }) {
  return (
    <dl class="facts">
      {facts.map(({ name, value, tone }) => (
        <>
          <dt>{name}</dt>
          <dd class={tone}>{value}</dd>
        </>
      ))}
    </dl>
  );
}
