// Writes mock/kinds.json anew: what an eventd says of the kinds of events and their fields.
//   node mock/takeKinds.mjs URL TOKEN
import { writeFile } from "node:fs/promises";

const [url, token] = process.argv.slice(2);
const response = await fetch(new URL("/v1/limits", url), {
  headers: { Authorization: `Bearer ${token}` },
});
if (!response.ok) throw new Error(`${response.status} ${await response.text()}`);
const { kinds } = await response.json();
await writeFile(new URL("kinds.json", import.meta.url), `${JSON.stringify(kinds, null, 2)}\n`);
