import { useEffect, useRef, useState } from "preact/hooks";
import type { Integer } from "../api/json";
import type { Event } from "../api/types";
import { visible } from "../events/visible";
import { ageOf, dateTime, grouped, zoneOf } from "../format";
import { readEvent } from "../state/ranges";
import { closeEvent, opening } from "../state/route";
import { limits } from "../state/server";
import { gone, noteGone } from "../state/stored";
import { shown } from "../state/tail";
import { CopyButton } from "../ui/CopyButton";
import { Icon } from "../ui/Icon";
import { Kind } from "../ui/Kind";
import { isNarrow } from "../ui/media";

interface Place {
  dsid: string;
  id: string;
}

type Found = { event?: Event; failure?: string };

function useEvent({ dsid, id }: Place): Found {
  const [found, setFound] = useState<Found>(() => {
    const event = shown.peek().find((one) => String(one.id) === id && String(one.dsid) === dsid);
    return event ? { event } : {};
  });
  useEffect(() => {
    readEvent(dsid, id).then(
      (event) => {
        if (event) setFound({ event });
        else if (found.event) noteGone(id);
        else setFound({ failure: "This event is not in the queue (any more)." });
      },
      (error: Error) => found.event || setFound({ failure: error.message }),
    );
  }, []);
  return found;
}

const timeKeys = new Set(["time", "date"]);

function FieldValue({ name, value }: { name: string; value: Integer }) {
  const isNumber = typeof value === "number" || isLongNumber(value);
  if (timeKeys.has(name) && isNumber) {
    return (
      <>
        {String(value)}
        <div class="muted">{dateTime(value, "utc")} UTC</div>
      </>
    );
  }
  return <>{isNumber ? grouped(value) : visible(String(value))}</>;
}

// A whole number beyond 2^53 comes as its digits.
function isLongNumber(value: Integer): boolean {
  return typeof value === "string" && /^\d{16,20}$/.test(value);
}

function Fields({ event }: { event: Event }) {
  const described = limits.value?.kinds[event.kind]?.fields ?? [];
  const help = new Map(described.map((field) => [field.key, field.help]));
  return (
    <dl class="fields">
      {Object.entries(event.fields).map(([name, value]) => (
        <div key={name}>
          <dt title={help.get(name)}>{visible(name)}</dt>
          <dd>
            <FieldValue name={name} value={value} />
          </dd>
        </div>
      ))}
    </dl>
  );
}

function Envelope({ event }: { event: Event }) {
  return (
    <dl class="fields">
      <div>
        <dt>kind</dt>
        <dd>
          <Kind name={event.kind} /> <span class="muted">type {event.type}</span>
        </dd>
      </div>
      <div>
        <dt>queue</dt>
        <dd>{String(event.dsid) === "0" ? "global queue" : `data selection ${event.dsid}`}</dd>
      </div>
      <div>
        <dt>date</dt>
        <dd>
          {dateTime(event.date, "local")} <span class="muted">{zoneOf("local")}</span>
          <div class="muted">{dateTime(event.date, "utc")} UTC</div>
          <div class="muted">{ageOf(event.date)} ago</div>
        </dd>
      </div>
    </dl>
  );
}

function Details({ event }: { event: Event }) {
  return (
    <>
      {event.problem ? <p class="banner bad">{visible(event.problem)}</p> : null}
      <Envelope event={event} />
      <h3>Fields</h3>
      {Object.keys(event.fields).length > 0 ? (
        <Fields event={event} />
      ) : (
        <p class="muted">Its event string cannot be taken apart.</p>
      )}
      <div class="card-head">
        <h3>Event string</h3>
        <CopyButton id="copy-event-string" text={event.eventString} name="Copy" />
      </div>
      <pre class="raw" data-testid="event-string">
        {visible(event.eventString)}
      </pre>
      {event.eventStringHex ? (
        <>
          <div class="card-head">
            <h3>Its bytes</h3>
            <CopyButton text={event.eventStringHex} name="Copy" />
          </div>
          <p class="muted">The event string is not UTF-8; this is what is stored.</p>
          <pre class="raw">{event.eventStringHex}</pre>
        </>
      ) : null}
    </>
  );
}

function useFocusWhenOpened() {
  const heading = useRef<HTMLHeadingElement>(null);
  useEffect(() => {
    if (opening.takesFocus || isNarrow.peek()) heading.current?.focus({ preventScroll: true });
  }, []);
  return heading;
}

export function EventPanel(place: Place) {
  const { event, failure } = useEvent(place);
  const heading = useFocusWhenOpened();
  return (
    <aside class="card panel" aria-labelledby="panel-title">
      <div class="card-head">
        <h2 id="panel-title" ref={heading} tabIndex={-1}>
          Event {place.id}
        </h2>
        <button type="button" class="icon" aria-label="Close" onClick={closeEvent}>
          <Icon name="close" />
        </button>
      </div>
      {event && gone.value.has(place.id) ? (
        <p class="banner warn">Deleted: the queue does not have it any more.</p>
      ) : null}
      {event ? <Details event={event} /> : null}
      {event || failure ? null : <p class="muted">Asking for it …</p>}
      {failure ? <p role="alert">{failure}</p> : null}
    </aside>
  );
}
