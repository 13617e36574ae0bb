import type { Page } from "@playwright/test";
import { kinds } from "../../web/console/mock/kinds.mjs";
import type { Queue, Stats } from "../../web/console/src/api/types";
import { expect, goTo, pageOnly, test } from "./support/test";

test.describe("A server that goes away", () => {
  test("is missed and welcomed back", async ({ page, enter, line, produce, marker }) => {
    await enter();
    line.cut();
    await expect(page.getByRole("alert")).toContainText("The server does not answer");
    await expect(page.getByTestId("state")).toHaveText("no answer");
    await expect(page.getByText("Events in the queues")).toBeVisible();
    await produce.sendLegacy(marker);
    line.mend();
    await page.getByRole("button", { name: "Try now" }).click();
    await expect(page.getByTestId("state")).toHaveText("connected");
    await expect(page.getByRole("alert")).toHaveCount(0);
    await expect(page.getByRole("status").filter({ hasText: "answers again" })).toHaveCount(1);
    await expect(page.getByRole("link", { name: marker })).toBeVisible();
  });

  test("is found by itself when it comes back", async ({ page, enter, line }) => {
    await enter();
    line.cut();
    await expect(page.getByTestId("state")).toHaveText("no answer");
    line.mend();
    await expect(page.getByTestId("state")).toHaveText("connected");
  });

  test("is not there when the token is given", async ({ page, line, server }) => {
    await page.goto("/");
    await expect(page.getByLabel("Token")).toBeVisible();
    line.cut();
    await page.getByLabel("Token").fill(server.read);
    await page.getByRole("button", { name: "Log in" }).click();
    await expect(page.getByText("The server does not answer.")).toBeVisible();
    line.mend();
    await page.getByRole("button", { name: "Log in" }).click();
    await expect(page.getByTestId("state")).toHaveText("connected");
  });
});

const problem = (detail: string) =>
  JSON.stringify({ type: "/problems/unavailable", title: "unavailable", status: 503, detail });

test("A server in trouble says what it has", pageOnly, async ({ page, enter }) => {
  await enter();
  await page.route("**/v1/stats", (route) =>
    route.fulfill({ status: 503, body: problem("The disk is gone.") }),
  );
  await expect(page.getByRole("alert")).toContainText("The disk is gone.");
  await expect(page.getByTestId("state")).toHaveText("in trouble");
  await page.unroute("**/v1/stats");
  await expect(page.getByTestId("state")).toHaveText("connected");
});

test("A queue that is not ready is told", pageOnly, async ({ page, enter }) => {
  await page.route("**/readyz", (route) =>
    route.fulfill({ status: 503, body: problem("Row 7 is damaged.") }),
  );
  await enter();
  await expect(page.getByRole("alert")).toContainText("The queue is not ready. Row 7 is damaged.");
});

// Has the page see other figures than the server gave.
async function changeStats(page: Page, change: (stats: Stats) => object): Promise<void> {
  await page.route("**/v1/stats", async (route) => {
    const response = await route.fetch();
    const stats = await response.json();
    await route.fulfill({ response, json: { ...stats, ...change(stats) } });
  });
}

test("A restart is told", pageOnly, async ({ page, enter }) => {
  await enter();
  await changeStats(page, ({ startTime }) => ({ startTime: startTime + 60 }));
  await expect(page.getByText("The server was started again")).toBeVisible();
});

test("The figures follow the queue", async ({ page, enter, produce, marker }) => {
  await enter();
  const chart = page.getByRole("img", { name: /^Events in the queue: now / });
  await expect(chart).toBeVisible();
  await expect(page.locator("canvas")).toHaveCount(2);
  const figure = page.locator(".figure-card").filter({ hasText: "Events in the queues" });
  const count = async () =>
    Number((await figure.locator("dd").first().innerText()).replace(/\D/g, ""));
  await produce.addQueue("23");
  const before = await count();
  const events = Array.from({ length: 100 }, () => ({
    kind: "legacy",
    fields: { payload: marker },
  }));
  await produce.sendText(JSON.stringify(events), "23");
  await expect.poll(count).toBeGreaterThanOrEqual(before + 100);
});

test("The first reading has its time on the scale", pageOnly, async ({ page, enter }) => {
  await page.addInitScript(() => {
    const words: string[] = [];
    Object.assign(window, { words });
    const write = CanvasRenderingContext2D.prototype.fillText;
    CanvasRenderingContext2D.prototype.fillText = function (text, ...rest) {
      words.push(text);
      write.call(this, text, ...rest);
    };
  });
  let readings = 0;
  await page.route("**/v1/stats", (route) => (++readings > 1 ? undefined : route.continue()));
  await enter();
  await expect(page.locator("canvas")).toHaveCount(2);
  const words = () => page.evaluate(() => (window as unknown as { words: string[] }).words);
  await expect.poll(async () => (await words()).join()).toMatch(/\d\d:\d\d:\d\d/);
  expect(await words()).not.toContain("00:00");
});

test("A queue that holds nothing has charts that say so", pageOnly, async ({ page, enter }) => {
  const empty = { dsid: 8, known: true, count: 0, damaged: 0, highestId: 0, types: {} };
  await changeStats(page, () => ({ queues: [empty], count: 0 }));
  await enter();
  await expect(page.locator(".chart").nth(0)).toContainText("Events 0");
  await expect(page.locator(".chart").nth(1)).toContainText("Age of the oldest nothing waits");
});

test("Many queues with long names fit", pageOnly, async ({ page, enter }) => {
  const queueOf = (dsid: number): Queue => ({
    dsid,
    name: `${"a long name ".repeat(20)}${"x".repeat(200)} ${dsid}`,
    type: 9,
    known: true,
    count: dsid,
    damaged: 0,
    highestId: "18446744073709551615",
    oldest: 1,
    newest: 2,
    types: { legacy: dsid },
  });
  await changeStats(page, ({ queues }) => ({
    queues: [...queues.slice(0, 1), ...Array.from({ length: 200 }, (_, i) => queueOf(i + 5))],
  }));
  await page.setViewportSize({ width: 390, height: 800 });
  await enter();
  for (const view of ["Overview", "Events", "Queues"]) {
    await goTo(page, view);
    const overhang = await page.evaluate(() => document.documentElement.scrollWidth - innerWidth);
    expect(overhang, view).toBeLessThanOrEqual(0);
  }
  await expect(page.getByRole("rowheader")).toHaveCount(201);
  await page.getByRole("link", { name: /^204: a long name/ }).click();
  await expect(page.getByRole("combobox", { name: "Queue" })).toHaveValue("204");
});

test("The queues are listed, and lead to their events", async ({ page, enter }) => {
  await enter();
  await goTo(page, "Queues");
  await expect(page.getByRole("row", { name: /global queue/ })).toBeVisible();
  await page.getByRole("link", { name: "global queue" }).click();
  await expect(page.getByRole("grid")).toBeVisible();
});

test("A limit that is near is seen to be", pageOnly, async ({ page, enter }) => {
  await changeStats(page, ({ queues }) => ({
    queues: queues.map((queue) => (queue.dsid === 0 ? { ...queue, count: 950 } : queue)),
    countLimit: 1000,
  }));
  await enter();
  await goTo(page, "Limits");
  const meter = page.getByRole("meter", { name: "Length of the global queue" });
  await expect(meter).toHaveAttribute("aria-valuetext", "950 of 1\u202f000");
  await expect(page.locator(".meter.bad")).toContainText("Length of the global queue");
  await page.locator("summary").filter({ hasText: "capacity" }).click();
  await expect(page.getByRole("row", { name: /usedphys/ })).toBeVisible();
});

test("The mock tells the kinds of events as the server does", async ({ server }) => {
  const response = await fetch(`${server.url}/v1/limits`, {
    headers: { Authorization: `Bearer ${server.read}` },
  });
  const limits = await response.json();
  expect(limits.kinds, "renew it with web/console/mock/takeKinds.mjs").toEqual(kinds);
});

test.describe("A cluster", () => {
  const member = {
    endpoint: "10.0.0.1:2379",
    reachable: true,
    failure: "",
    name: "etcd-1",
    version: "3.4.23",
    leader: true,
    databaseBytes: 1024,
    databaseBytesInUse: 512,
    quotaBytes: 2048,
  };
  const fuller = { ...member, endpoint: "10.0.0.3:2379", name: "etcd-3", leader: false };
  const away = { ...fuller, endpoint: "10.0.0.2:2379", name: "", quotaBytes: 0 };
  const cluster = {
    members: [
      member,
      { ...away, reachable: false, failure: "no route" },
      { ...fuller, databaseBytes: 2000 },
    ],
    alarms: ["NOSPACE"],
    failure: "",
  };
  const items = (page: Page) => page.getByRole("main").getByRole("listitem");

  test("is shown with its members", pageOnly, async ({ page, enter }) => {
    await changeStats(page, () => ({ cluster }));
    await enter();
    await expect(page.getByRole("meter", { name: "Database of etcd-3" })).toBeVisible();
    await page.getByRole("link", { name: "Cluster a member does not answer" }).click();
    await expect(items(page).filter({ hasText: "etcd-1" })).toContainText("leader");
    await expect(items(page).filter({ hasText: "10.0.0.2" })).toContainText("no route");
    await expect(page.getByText("NOSPACE")).toBeVisible();
    await expect(page.getByTestId("quorum")).toHaveText("2 of 3 members answer; 2 are needed.");
  });

  test("is shown most of all when the queues cannot be read", pageOnly, async ({ page, enter }) => {
    await enter();
    await page.route("**/v1/stats", (route) =>
      route.fulfill({ status: 500, body: problem("No leader.") }),
    );
    const members = cluster.members.map((one) => ({ ...one, leader: false }));
    await page.route("**/v1/cluster", (route) =>
      route.fulfill({ json: { clustered: true, ...cluster, members } }),
    );
    await goTo(page, "Cluster");
    await expect(page.getByRole("alert")).toContainText("No leader.");
    await expect(page.getByTestId("quorum")).toContainText("None of them leads.");
    await expect(items(page)).toHaveCount(3);
  });
});

test.describe("A check", () => {
  test("says what it found, and repairs only after asking", pageOnly, async ({ page, enter }) => {
    const asked: unknown[] = [];
    await page.route("**/v1/check", async (route) => {
      const { fix } = route.request().postDataJSON();
      asked.push(fix);
      const findings = [{ level: "error", code: 4, message: "event 17 <b>cannot</b> be read" }];
      await route.fulfill({ json: { fix, findings, remaining: fix ? 0 : 1 } });
    });
    await enter();
    await goTo(page, "Check");
    await page.getByRole("button", { name: "Look for damage" }).click();
    await expect(page.getByText("event 17 <b>cannot</b> be read")).toBeVisible();
    expect(asked).toEqual([false]);
    await page.getByRole("button", { name: "Repair …" }).click();
    await page.getByRole("button", { name: "Leave as it is" }).click();
    await expect(page.getByRole("dialog")).toHaveCount(0);
    expect(asked).toEqual([false]);
    await page.getByRole("button", { name: "Repair …" }).click();
    await page.getByRole("dialog").getByRole("button", { name: "Repair" }).click();
    await expect(page.getByTestId("verdict")).toContainText("nothing remains to be repaired");
    expect(asked).toEqual([false, true]);
  });

  test("is about the database in cluster mode, and says so", pageOnly, async ({ page, enter }) => {
    await changeStats(page, () => ({ cluster: { members: [], alarms: [], failure: "" } }));
    await page.route("**/v1/check", (route) =>
      route.fulfill({ json: { fix: false, findings: [], remaining: 0, checked: "database" } }),
    );
    await enter();
    await goTo(page, "Check");
    await expect(page.getByText("this is about the database")).toBeVisible();
    await page.getByRole("button", { name: "Look for damage" }).click();
    await expect(page.getByTestId("verdict")).toContainText("The database is in order");
  });

  test("that fails says why", pageOnly, async ({ page, enter }) => {
    await page.route("**/v1/check", (route) =>
      route.fulfill({ status: 503, body: problem("A page cannot be read.") }),
    );
    await enter();
    await goTo(page, "Check");
    await page.getByRole("button", { name: "Look for damage" }).click();
    await expect(page.getByText("A page cannot be read.")).toBeVisible();
  });
});
