// A day of events, moved so that it ends now.
import { readFileSync } from "node:fs";

export interface Line {
  dsid: string;
  eventString: string;
}

const dateOf = (line: string) => Number(/date:(\d+)/.exec(line)?.[1]);

// The lines that a comment calls damaged are left out.
export function readDay(file: string, endsAt: number): Line[] {
  const text = readFileSync(file, "utf8").replace(/^# Damaged.*\n.*\n/gm, "");
  const lines = text.split("\n").filter((line) => line !== "" && !line.startsWith("#"));
  const by = Math.floor(endsAt) - Math.max(...lines.map(dateOf));
  return lines.map((line) => {
    const [, dsid = "0", rest = ""] = /^(?:dsid=(\d+) )?(.*)$/.exec(line) ?? [];
    const moved = (_: string, key: string, at: string) => `${key}:${Number(at) + by}`;
    return { dsid, eventString: rest.replace(/\b(date|time):(\d{10})\b/g, moved) };
  });
}
