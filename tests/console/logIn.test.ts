import { expect, goTo, pageOnly, test } from "./support/test";

test.describe("Logging in", () => {
  test("asks for a token and refuses a wrong one", async ({ page, server }) => {
    await page.goto("/");
    await page.getByLabel("Token").fill("wrong");
    await page.getByRole("button", { name: "Log in" }).click();
    await expect(page.getByRole("alert").filter({ hasText: "refused" })).toBeVisible();
    await expect(page.getByRole("navigation")).toHaveCount(0);
    await page.getByLabel("Token").fill(server.read);
    await page.getByRole("button", { name: "Log in" }).click();
    await expect(page.getByTestId("state")).toHaveText("connected");
    await expect(page.getByRole("banner")).toContainText("read");
  });

  test("refuses what cannot be a token without asking the server", pageOnly, async ({ page }) => {
    await page.goto("/");
    await page.getByLabel("Token").fill("schlüssel");
    await page.getByRole("button", { name: "Log in" }).click();
    await expect(page.getByRole("alert").filter({ hasText: "visible ASCII" })).toBeVisible();
  });

  test("takes the token out of the address and keeps it in this tab", async ({ page, enter }) => {
    await enter();
    expect(page.url()).not.toContain("token");
    await page.reload();
    await expect(page.getByTestId("state")).toHaveText("connected");
    expect(await page.evaluate(() => JSON.stringify(localStorage))).not.toContain("token");
  });

  test("takes a token from an address that an open page is given", async ({ page, server }) => {
    await page.goto("/");
    await expect(page.getByLabel("Token")).toBeVisible();
    await page.goto(`/#token=${server.read}`);
    await expect(page.getByTestId("state")).toHaveText("connected");
    expect(page.url()).not.toContain("token");
  });

  test("forgets everything when one logs out", async ({ page, enter }) => {
    await enter();
    await page.getByRole("button", { name: "Log out" }).click();
    await expect(page.getByLabel("Token")).toBeVisible();
    await expect(page.getByText("Events in the queues")).toHaveCount(0);
    await page.reload();
    await expect(page.getByLabel("Token")).toBeVisible();
  });

  test("hides from a reader what is for administrators", async ({ page, enter, server }) => {
    await enter(server.read);
    await expect(page.getByRole("link", { name: "Queues" })).toBeVisible();
    await expect(page.getByRole("link", { name: "Check" })).toHaveCount(0);
    await page.goto("/#/check");
    await expect(page.getByText("This needs the role admin.")).toBeVisible();
    await expect(page.getByRole("button", { name: "Look for damage" })).toHaveCount(0);
  });

  test("shows administrators what is for them", async ({ page, enter }) => {
    await enter();
    await goTo(page, "Check");
    await expect(page.getByRole("button", { name: "Look for damage" })).toBeVisible();
  });

  test("ends when the token is no longer accepted", async ({ page, enter }) => {
    await enter();
    await page.route("**/v1/**", (route) => route.fulfill({ status: 401, body: "{}" }));
    await expect(page.getByLabel("Token")).toBeVisible();
    await expect(page.getByText("The server refused this token.")).toBeVisible();
  });
});
