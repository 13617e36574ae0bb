import { expect, goTo, test } from "./support/test";

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

test("A server in trouble says what it has", async ({ page, enter }) => {
  await enter();
  await page.route("**/v1/stats", (route) =>
    route.fulfill({ status: 503, body: problem("The disk is gone.") }),
  );
  await expect(page.getByRole("alert")).toContainText("The disk is gone.");
  await expect(page.getByTestId("state")).toHaveText("in trouble");
  await page.unroute("**/v1/stats");
  await expect(page.getByTestId("state")).toHaveText("connected");
});

test("A queue that is not ready is told", async ({ page, enter }) => {
  await page.route("**/readyz", (route) =>
    route.fulfill({ status: 503, body: problem("Row 7 is damaged.") }),
  );
  await enter();
  await expect(page.getByRole("alert")).toContainText("The queue is not ready. Row 7 is damaged.");
});

test("A restart is told", async ({ page, enter }) => {
  await enter();
  await page.route("**/v1/stats", async (route) => {
    const response = await route.fetch();
    const stats = await response.json();
    await route.fulfill({ response, json: { ...stats, startTime: stats.startTime + 60 } });
  });
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
  const before = await count();
  const events = Array.from({ length: 100 }, () => ({
    kind: "legacy",
    fields: { payload: marker },
  }));
  await produce.sendText(JSON.stringify(events));
  await expect.poll(count).toBeGreaterThanOrEqual(before + 100);
});

test("The queues are listed, and lead to their events", async ({ page, enter }) => {
  await enter();
  await goTo(page, "Queues");
  await expect(page.getByRole("row", { name: /global queue/ })).toBeVisible();
  await page.getByRole("link", { name: "global queue" }).click();
  await expect(page.getByRole("grid")).toBeVisible();
});

test("A limit that is near is seen to be", async ({ page, enter }) => {
  await page.route("**/v1/stats", async (route) => {
    const response = await route.fetch();
    const stats = await response.json();
    const queues = stats.queues.map((queue: { dsid: number }) =>
      queue.dsid === 0 ? { ...queue, count: 950 } : queue,
    );
    await route.fulfill({ response, json: { ...stats, queues, countLimit: 1000 } });
  });
  await enter();
  await goTo(page, "Limits");
  const meter = page.getByRole("meter", { name: "Length of the global queue" });
  await expect(meter).toHaveAttribute("aria-valuetext", "950 of 1\u202f000");
  await expect(page.locator(".meter.bad")).toContainText("Length of the global queue");
  await page.locator("summary").filter({ hasText: "capacity" }).click();
  await expect(page.getByRole("row", { name: /usedphys/ })).toBeVisible();
});

test("The members of a cluster are shown", async ({ page, enter }) => {
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
  const away = {
    ...member,
    endpoint: "10.0.0.2:2379",
    reachable: false,
    failure: "no route",
    name: "",
  };
  await page.route("**/v1/stats", async (route) => {
    const response = await route.fetch();
    const cluster = { members: [member, away], alarms: ["NOSPACE"], failure: "" };
    await route.fulfill({ response, json: { ...(await response.json()), cluster } });
  });
  await enter();
  await goTo(page, "Cluster");
  await expect(page.getByRole("listitem").filter({ hasText: "etcd-1" })).toContainText("leader");
  await expect(page.getByRole("listitem").filter({ hasText: "10.0.0.2" })).toContainText(
    "no route",
  );
  await expect(page.getByText("NOSPACE")).toBeVisible();
});

test.describe("A check", () => {
  test("says what it found, and repairs only after asking", async ({ page, enter }) => {
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

  test("that fails says why", async ({ page, enter }) => {
    await page.route("**/v1/check", (route) =>
      route.fulfill({ status: 503, body: problem("A page cannot be read.") }),
    );
    await enter();
    await goTo(page, "Check");
    await page.getByRole("button", { name: "Look for damage" }).click();
    await expect(page.getByText("A page cannot be read.")).toBeVisible();
  });
});
