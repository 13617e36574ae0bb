// What may be wider than the page, as tables are on a phone: it scrolls sideways, and shows at its
// edges where there is more.

import type { ComponentChildren } from "preact";
import { useLayoutEffect, useRef, useState } from "preact/hooks";

function moreOf({ scrollLeft, scrollWidth, clientWidth }: HTMLElement): string {
  const sides = [];
  if (scrollLeft > 1) sides.push("left");
  if (scrollLeft + clientWidth < scrollWidth - 1) sides.push("right");
  return sides.join(" ");
}

export function Wide({ label, children }: { label: string; children: ComponentChildren }) {
  const place = useRef<HTMLDivElement>(null);
  const [more, setMore] = useState("");
  const look = () => place.current && setMore(moreOf(place.current));
  useLayoutEffect(() => {
    const element = place.current;
    if (!element) return;
    const watch = new ResizeObserver(look);
    for (const one of [element, ...element.children]) watch.observe(one);
    return () => watch.disconnect();
  }, []);
  return (
    <div class="wide-frame" data-more={more}>
      {/* biome-ignore lint/a11y/noNoninteractiveTabindex: what scrolls must be reachable by keys */}
      <div ref={place} class="scroll" tabIndex={0} role="region" aria-label={label} onScroll={look}>
        {children}
      </div>
    </div>
  );
}
