import { render } from "preact";
import "uplot/dist/uPlot.min.css";
import "./styles/base.css";
import "./styles/frame.css";
import "./styles/parts.css";
import "./styles/events.css";
import { effect } from "@preact/signals";
import { view, viewNames } from "./state/route";
import { keepSearching } from "./state/search";
import { forgetServer, reach, tryNow, watchServer } from "./state/server";
import { identify, restoreToken, standing, takeTokenFromAddress } from "./state/session";
import { followTheme } from "./state/settings";
import { watchStored } from "./state/stored";
import { keepTail } from "./state/tail";
import { App } from "./ui/App";

function start(): void {
  followTheme();
  if (!takeTokenFromAddress()) restoreToken();
  addEventListener("hashchange", () => {
    if (takeTokenFromAddress())
      void identify()
        .catch(() => undefined)
        .finally(tryNow);
  });
  addEventListener("online", tryNow);
  document.addEventListener("visibilitychange", () => {
    if (document.visibilityState === "visible") tryNow();
  });
  effect(() => {
    if (standing.value === "out") forgetServer();
    if (standing.value === "in") tryNow();
  });
  effect(() => {
    const trouble = reach.value.is === "down" ? "no answer – " : "";
    const place = standing.value === "in" ? ` – ${viewNames[view.value]}` : "";
    document.title = `${trouble}eventd ${location.host}${place}`;
  });
  keepTail();
  keepSearching();
  watchStored();
  void watchServer();
  const page = document.getElementById("page");
  if (page) render(<App />, page);
}

start();
