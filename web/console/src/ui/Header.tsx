import { useEffect, useRef } from "preact/hooks";
import { zoneName, zoneOf } from "../format";
import { addressOfView, go, type View, view, viewNames, views } from "../state/route";
import { cluster, reach, stats } from "../state/server";
import { hasToken, logOut, may, me, standing } from "../state/session";
import { clock, nextClock, nextTheme, theme } from "../state/settings";
import { Icon } from "./Icon";
import { helpIsOpen } from "./keys";

// What is wrong in a view that is not open.
function troubleIn(one: View): string | undefined {
  if (one === "queues" && stats.value?.queues.some((queue) => queue.damaged > 0)) {
    return "damaged events";
  }
  const members = cluster.value?.members ?? [];
  if (one === "cluster" && members.some((member) => !member.reachable)) {
    return "a member does not answer";
  }
  return undefined;
}

function Dot({ text }: { text: string | undefined }) {
  return text ? <span class="dot" role="img" aria-label={text} title={text} /> : null;
}

function isOffered(one: View): boolean {
  if (one === "check") return may("admin");
  if (one === "cluster") return cluster.value !== undefined || view.value === "cluster";
  return true;
}

// On a phone the views are more than fit; the one that is open is in sight.
function useSight() {
  const place = useRef<HTMLElement>(null);
  useEffect(() => {
    const link = place.current?.querySelector("[aria-current]");
    link?.scrollIntoView({ block: "nearest", inline: "nearest" });
  }, [view.value, standing.value]);
  return place;
}

function Navigation() {
  const place = useSight();
  if (standing.value !== "in") return null;
  return (
    <nav ref={place} aria-label="Views">
      {views.filter(isOffered).map((one) => (
        <a
          key={one}
          href={addressOfView(one)}
          aria-current={view.value === one ? "page" : undefined}
          onClick={(event) => {
            event.preventDefault();
            go(one);
          }}
        >
          {viewNames[one]}
          <Dot text={troubleIn(one)} />
        </a>
      ))}
    </nav>
  );
}

const reachTexts = {
  unknown: ["connecting", ""],
  up: ["connected", "ok"],
  down: ["no answer", "bad"],
  troubled: ["in trouble", "warn"],
} as const;

function State() {
  const [text, level] = reachTexts[reach.value.is];
  return (
    <span class={`state ${level}`} data-testid="state">
      {text}
    </span>
  );
}

function Identity() {
  if (!me.value) return null;
  const { name, role, via } = me.value;
  return (
    <div class="identity">
      <span title={`known by ${via}`}>
        {name ? <span class="name">{name}</span> : null} <span class="role">{role}</span>
      </span>
      {hasToken.value ? (
        <button type="button" class="plain" onClick={logOut}>
          Log out
        </button>
      ) : null}
    </div>
  );
}

export function Header() {
  return (
    <header>
      <div class="title">
        <Icon name="mark" />
        <h1>eventd</h1>
        <span class="host">{location.host}</span>
      </div>
      {standing.value === "out" ? null : <State />}
      <Navigation />
      <div class="tools">
        <button
          type="button"
          class="zone with-icon"
          onClick={nextClock}
          aria-label={`Times: ${zoneOf(clock.value)}`}
          title={`Times are those of ${zoneOf(clock.value)} (u: local or UTC)`}
        >
          <Icon name="clock" /> {zoneName(clock.value)}
        </button>
        <button
          type="button"
          class="icon"
          onClick={nextTheme}
          aria-label={`Theme: ${theme.value}`}
          title={`Theme: ${theme.value}`}
        >
          <Icon name={theme.value} />
        </button>
        <button
          type="button"
          class="icon"
          aria-label="Help and shortcuts"
          title="Help and shortcuts (?)"
          onClick={() => (helpIsOpen.value = true)}
        >
          <Icon name="help" />
        </button>
        <Identity />
      </div>
    </header>
  );
}
