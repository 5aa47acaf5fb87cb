import type { ComponentChildren } from "preact";
import { useEffect, useId, useRef } from "preact/hooks";

interface Props {
  title: string;
  /// Escape and the like; without it the dialog stays until it is taken away.
  onCancel?: (() => void) | undefined;
  /// "block" is modal over the suite's pages only: whoever shows it makes them inert.
  tone?: "plain" | "block";
  children: ComponentChildren;
}

/// A dialog that comes before everything else, for as long as it is rendered; what was in focus before has it again afterwards.
export function Dialog({ title, onCancel, tone = "plain", children }: Props) {
  const id = useId();
  const element = useRef<HTMLDialogElement>(null);
  useEffect(() => {
    const dialog = element.current;
    const before = document.activeElement;
    const show = () => {
      if (!dialog?.isConnected || dialog.open) return;
      if (tone === "block") dialog.show();
      else dialog.showModal();
    };
    show();
    // A browser closes even a dialog that refuses to, when it is asked twice.
    dialog?.addEventListener("close", show);
    return () => {
      dialog?.removeEventListener("close", show);
      dialog?.close();
      if (before instanceof HTMLElement) before.focus();
    };
  }, []);
  return (
    <dialog
      ref={element}
      class={`dialog ${tone}`}
      aria-labelledby={id}
      onCancel={(event) => {
        event.preventDefault();
        onCancel?.();
      }}
    >
      <h2 id={id}>{title}</h2>
      {children}
    </dialog>
  );
}
