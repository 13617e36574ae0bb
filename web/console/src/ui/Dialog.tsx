import type { ComponentChildren } from "preact";
import { useEffect, useId, useRef } from "preact/hooks";

interface Props {
  open: boolean;
  title: string;
  onClose: () => void;
  children: ComponentChildren;
}

// A modal dialog; the browser keeps the focus inside and gives it back afterwards.
export function Dialog({ open, title, onClose, children }: Props) {
  const dialog = useRef<HTMLDialogElement>(null);
  const heading = useId();
  useEffect(() => {
    if (open && !dialog.current?.open) dialog.current?.showModal();
    if (!open) dialog.current?.close();
  }, [open]);
  return (
    <dialog ref={dialog} aria-labelledby={heading} onClose={onClose}>
      <h2 id={heading}>{title}</h2>
      {open ? children : null}
    </dialog>
  );
}
