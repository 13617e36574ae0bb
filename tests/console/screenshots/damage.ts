// Damage as a failing disk or a careless hand leaves it, done to the database behind eventd's back.
import { execFileSync } from "node:child_process";

const script = `
import sqlite3, sys
with sqlite3.connect(sys.argv[1]) as database:
    for statement in sys.argv[2:]:
        database.execute(statement)
`;

export function damage(database: string, ids: string[]): void {
  const [cut, misfiled, mixed] = ids;
  execFileSync("python3", [
    "-c",
    script,
    database,
    `UPDATE events SET eventstring = substr(eventstring, 1, 44) WHERE id = ${cut}`,
    `UPDATE events SET eventid = eventid + 700 WHERE id = ${misfiled}`,
    `UPDATE events SET eventstring = replace(eventstring, ';', ',') WHERE id = ${mixed}`,
  ]);
}
