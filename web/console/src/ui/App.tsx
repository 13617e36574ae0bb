import { useEffect } from "preact/hooks";
import { view } from "../state/route";
import { reach } from "../state/server";
import { me, standing } from "../state/session";
import { CheckView } from "../views/CheckView";
import { ClusterView } from "../views/ClusterView";
import { EventsView } from "../views/EventsView";
import { LimitsView } from "../views/LimitsView";
import { LogIn } from "../views/LogIn";
import { Overview } from "../views/Overview";
import { QueuesView } from "../views/QueuesView";
import { announcement } from "./announce";
import { Banner } from "./Banner";
import { Header } from "./Header";
import { Help } from "./Help";
import { listenToKeys } from "./keys";

const pages = {
  overview: Overview,
  events: EventsView,
  queues: QueuesView,
  limits: LimitsView,
  check: CheckView,
  cluster: ClusterView,
};

function Page() {
  if (standing.value === "out") return <LogIn />;
  if (standing.value === "starting" || !me.value) {
    return (
      <p class="empty" role="status">
        {reach.value.is === "unknown" ? "Asking the server …" : "Waiting for the server …"}
      </p>
    );
  }
  const View = pages[view.value];
  return <View />;
}

export function App() {
  useEffect(listenToKeys, []);
  return (
    <>
      <a class="skip" href="#main" onClick={skipToMain}>
        Skip to the content
      </a>
      <Header />
      <Banner />
      <main id="main" tabIndex={-1}>
        <Page />
      </main>
      <Help />
      <div class="unseen" role="status" aria-live="polite">
        {announcement.value}
      </div>
    </>
  );
}

// The address behind "#" says which view is open, so the link must not change it.
function skipToMain(event: MouseEvent): void {
  event.preventDefault();
  document.getElementById("main")?.focus();
}
