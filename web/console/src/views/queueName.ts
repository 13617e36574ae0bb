import type { Queue } from "../api/types";
import { visible } from "../events/visible";

// What a queue is called in lists.
export function queueName(queue: Queue): string {
  if (String(queue.dsid) === "0") return "global queue";
  return queue.name ? `${queue.dsid}: ${visible(queue.name)}` : `data selection ${queue.dsid}`;
}
