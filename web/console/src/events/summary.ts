// One line that says what an event is about: its texts first, because they say most.

import type { Integer } from "../api/json";
import type { Event } from "../api/types";
import { grouped } from "../format";

function ofHundred(part: Integer | undefined, whole: Integer | undefined): string {
  const share = Number(part) / Number(whole);
  return Number.isFinite(share) ? `${(100 * share).toFixed(1)} % used` : "";
}

type Fields = Event["fields"];

const summaries: Record<string, (fields: Fields) => (Integer | undefined)[]> = {
  legacy: (f) => [f.payload],
  imagerep: (f) => [f.path, `lsu ${f.lsu}`, `size ${f.size}`],
  lsustatus: (f) => [f.server, `state ${f.state}`],
  serverstatus: (f) => [f.server, `state ${f.state}`],
  capacity: (f) => [f.server, ofHundred(f.used, f.capacity), `used ${grouped(f.used ?? "")}`],
  abilities: (f) => [f.server, `flags 0x${Number(f.flags).toString(16).toUpperCase()}`],
  activity: (f) => [f.msg, `action ${f.action}`, `severity ${f.severity}`],
  audit: (f) => [f.AUditMSg, `action ${f.action}`],
  kelp: (f) => [f.string, `issue ${f.issue}`, `severity ${f.severity}`],
};

export interface Summary {
  main: string;
  details: string[];
}

export function summaryOf(event: Event): Summary {
  const summarise = summaries[event.kind];
  if (!summarise || Object.keys(event.fields).length === 0) {
    return { main: event.eventString, details: [] };
  }
  const [main, ...details] = summarise(event.fields).map((part) => String(part ?? ""));
  return { main: main ?? "", details: details.filter((detail) => detail !== "") };
}
