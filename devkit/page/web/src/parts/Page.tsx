import type { ComponentChildren } from "preact";
import { useId } from "preact/hooks";
import { changing } from "../model/Rights";
import { text } from "../text/Text";
import { Button } from "./Button";

export function Page({ title, lead, children }: { title: string; lead?: string; children: ComponentChildren }) {
  return (
    <>
      <header class="page-head">
        <h1 tabIndex={-1}>{title}</h1>
        {lead && <p class="lead">{lead}</p>}
      </header>
      {children}
    </>
  );
}

interface CardProps {
  title?: string;
  class?: string;
  children: ComponentChildren;
}

/// A region of a page; one with a title can be found by it.
export function Card({ title, class: extra = "", children }: CardProps) {
  const id = useId();
  return (
    <section class={`card ${extra}`} aria-labelledby={title ? id : undefined}>
      {title && <h2 id={id}>{title}</h2>}
      {children}
    </section>
  );
}

/// Shown while a draft differs from what holds.
export function SaveBar({ onSave, onDiscard }: { onSave(): void; onDiscard(): void }) {
  const t = text.value;
  return (
    <div class="save-bar" role="group" aria-label={t.unsaved}>
      <span>{changing.value ? t.saving : t.unsaved}</span>
      <Button disabled={changing.value} onPress={onDiscard}>{t.discard}</Button>
      <Button primary disabled={changing.value} onPress={onSave}>{t.save}</Button>
      {changing.value && <progress aria-label={t.saving} />}
    </div>
  );
}
