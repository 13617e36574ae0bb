// What happens in the queues while the pictures are taken.
import { eventOf, inventEvent } from "../../../web/console/mock/events.mjs";
import type { Producer } from "../support/producer";
import { readDay } from "./day";

const day = 86_400;

const selections: [string, string, number][] = [
  ["4", "mail servers", 9],
  ["7", "file servers", 9],
  ["12", "databases", 9],
  ["31", "archive", 4],
];

// Five days in the global queue, two in those of the data selections.
export async function postThePast(produce: Producer, file: string): Promise<void> {
  for (const [dsid, name, type] of selections) await produce.addQueue(dsid, { name, type });
  for (let ago = 4; ago >= 0; --ago) {
    const lines = readDay(file, Date.now() / 1000 - ago * day);
    for (const queue of new Set(lines.map((line) => line.dsid))) {
      if (queue !== "0" && ago > 1) continue;
      const ours = lines.filter((line) => line.dsid === queue);
      await produce.sendStrings(
        ours.map((line) => line.eventString),
        queue,
      );
    }
  }
}

// Services that write all the time, and one that reads what is oldest, in bursts.
export class Traffic {
  private stopped = false;
  private running = Promise.resolve();

  constructor(private readonly produce: Producer) {}

  begin(): void {
    this.running = this.run();
  }

  private async run(): Promise<void> {
    for (let step = 0; !this.stopped; ++step) {
      const now = Math.floor(Date.now() / 1000);
      const { kind, fields } = inventEvent(now);
      const { eventString } = eventOf(kind, fields, 0, 0, now);
      await this.produce.sendStrings([eventString], step % 9 === 5 ? "12" : "0");
      if (step % 30 === 25) await this.consume(step % 90 === 25 ? 12 : 32);
      await new Promise((resolve) => setTimeout(resolve, 300 + 200 * Math.sin(step / 9)));
    }
  }

  private async consume(count: number): Promise<void> {
    const oldest = await this.produce.oldest(count);
    await this.produce.removeUpTo(oldest.at(-1) ?? "0");
  }

  async end(): Promise<void> {
    this.stopped = true;
    await this.running;
  }
}
