import { useEffect, useState } from "preact/hooks";
import { announce } from "./announce";

// The clipboard is there on secure pages only; elsewhere the text is left selected.
async function copy(text: string, button: HTMLElement): Promise<string> {
  try {
    await navigator.clipboard.writeText(text);
    return "Copied";
  } catch {
    const shown = button.closest(".card-head")?.nextElementSibling;
    if (shown) getSelection()?.selectAllChildren(shown);
    return "Selected: press Ctrl+C";
  }
}

export function CopyButton({ text, name, id }: { text: string; name: string; id?: string }) {
  const [done, setDone] = useState("");
  useEffect(() => {
    if (!done) return;
    const timer = setTimeout(() => setDone(""), 2000);
    return () => clearTimeout(timer);
  }, [done]);
  return (
    <button
      type="button"
      id={id}
      onClick={async (event) => {
        const result = await copy(text, event.currentTarget);
        setDone(result);
        announce(result);
      }}
    >
      {done || name}
    </button>
  );
}
