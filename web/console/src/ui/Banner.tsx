// What the user must know wherever they are: the server is gone, in trouble, or was restarted.

import { effect } from "@preact/signals";
import { dateTime, timeOfDay } from "../format";
import { notReady, reach, restartedAt, stats, tryNow } from "../state/server";
import { standing } from "../state/session";
import { clock } from "../state/settings";
import { announce } from "./announce";

let wasAway = false;

effect(() => {
  if (reach.value.is === "down") {
    wasAway = true;
  } else if (reach.value.is === "up" && wasAway) {
    wasAway = false;
    announce("The server answers again.");
  }
});

function Gone({ since }: { since: number }) {
  const known = stats.value ? " What you see below is what it said last." : "";
  return (
    <div class="banner bad" role="alert">
      <p>
        <strong>The server does not answer</strong> since {timeOfDay(since, clock.value)}. The page
        keeps trying.{known}
      </p>
      <button type="button" onClick={tryNow}>
        Try now
      </button>
    </div>
  );
}

function Trouble({ title, text }: { title: string; text: string }) {
  return (
    <div class="banner warn" role="alert">
      <p>
        <strong>{title}</strong> {text}
      </p>
    </div>
  );
}

function Restarted({ at }: { at: number }) {
  return (
    <div class="banner" role="status">
      <p>The server was started again at {dateTime(at, clock.value)}.</p>
      <button type="button" onClick={() => (restartedAt.value = undefined)}>
        Close
      </button>
    </div>
  );
}

export function Banner() {
  const now = reach.value;
  if (now.is === "down") return <Gone since={now.since} />;
  if (standing.value === "out") return null;
  return (
    <>
      {now.is === "troubled" ? <Trouble title="The server has trouble." text={now.why} /> : null}
      {notReady.value ? <Trouble title="The queue is not ready." text={notReady.value} /> : null}
      {restartedAt.value === undefined ? null : <Restarted at={restartedAt.value} />}
    </>
  );
}
