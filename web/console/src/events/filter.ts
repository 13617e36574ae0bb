// Which events of the list are shown.

import type { Event } from "../api/types";

export function matcher(text: string, kinds: ReadonlySet<string>): (event: Event) => boolean {
  const wanted = text.trim().toLowerCase();
  return (event) => {
    if (kinds.size > 0 && !kinds.has(event.kind)) return false;
    if (wanted === "") return true;
    return (
      String(event.id) === wanted ||
      event.kind.toLowerCase().includes(wanted) ||
      event.eventString.toLowerCase().includes(wanted)
    );
  };
}
