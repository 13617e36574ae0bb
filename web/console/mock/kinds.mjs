// The kinds of events as an eventd tells them; takeKinds.mjs asks one for them.
import { readFileSync } from "node:fs";

export const kinds = JSON.parse(readFileSync(new URL("kinds.json", import.meta.url), "utf8"));
