// How much of the past is kept: every reading of the last minutes, and of what is older one for
// each half minute. Interruptions, which hold no queues, are kept as long as all else.

const fineSeconds = 20 * 60;
const coarseStep = 30;
const mostSeconds = 24 * 60 * 60;

interface Timed {
  time: number; // seconds
  queues: ReadonlyMap<string, unknown>;
}

export function thin<T extends Timed>(list: T[], now: number): T[] {
  let last = Number.NEGATIVE_INFINITY;
  return list.filter(({ time, queues }) => {
    const age = now - time;
    if (age > mostSeconds) return false;
    if (queues.size === 0) return true;
    if (age > fineSeconds && time - last < coarseStep) return false;
    last = time;
    return true;
  });
}
