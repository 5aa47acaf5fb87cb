import type { ComponentChildren } from "preact";
import { attempt } from "../model/Notices";

interface Props {
  /// Where the content is a picture, or says too little by itself.
  label?: string;
  primary?: boolean;
  quiet?: boolean;
  disabled?: boolean;
  /// What fails of it is told.
  onPress(): unknown;
  children: ComponentChildren;
}

export function Button({ label, primary, quiet, disabled, onPress, children }: Props) {
  const look = quiet ? "quiet" : primary ? "button primary" : "button";
  const press = () => attempt(async () => void (await onPress()));
  return (
    <button type="button" class={look} aria-label={label} disabled={disabled} onClick={press}>
      {children}
    </button>
  );
}
