import type { Cluster, Stats } from "../api/types";
import { visible } from "../events/visible";
import { bytes, duration, grouped } from "../format";
import { globalQueue, limits } from "../state/server";
import { Meter, NoMeter } from "../ui/Meter";

function CountMeter({ limit }: { limit: number }) {
  const count = globalQueue.value?.count ?? 0;
  const name = "Length of the global queue";
  if (limit === 0) return <NoMeter name={name} text={`${grouped(count)}, no limit`} />;
  return (
    <Meter name={name} value={count} most={limit} text={`${grouped(count)} of ${grouped(limit)}`} />
  );
}

function AgeMeter({ days }: { days: number }) {
  const oldest = globalQueue.value?.oldest;
  const age = oldest === undefined ? 0 : Math.max(0, Date.now() / 1000 - Number(oldest));
  const name = "Age of its oldest event";
  if (days === 0) return <NoMeter name={name} text={`${duration(age)}, no limit`} />;
  const text = `${duration(age)} of ${grouped(days)}\u00a0d`;
  return <Meter name={name} value={Math.round(age)} most={days * 86400} text={text} />;
}

function Bounded({ name, value, most }: { name: string; value: number; most: number | undefined }) {
  if (!most) return <NoMeter name={name} text={grouped(value)} />;
  return (
    <Meter name={name} value={value} most={most} text={`${grouped(value)} of ${grouped(most)}`} />
  );
}

function DatabaseSpace({ now }: { now: Stats }) {
  const free = now.bytes?.diskFree;
  if (free === undefined) return null;
  const used = Number(now.bytes?.database ?? 0) + Number(now.bytes?.wal ?? 0);
  return <NoMeter name="Database" text={`${bytes(used)}, ${bytes(free)} free on its disk`} />;
}

// The member whose database is fullest is the one that ends the writes.
function ClusterSpace({ cluster }: { cluster: Cluster }) {
  const known = cluster.members.filter((member) => member.quotaBytes > 0);
  const share = (member: (typeof known)[number]) => member.databaseBytes / member.quotaBytes;
  const [fullest] = known.sort((a, b) => share(b) - share(a));
  if (!fullest) return null;
  const { name, databaseBytes: used, quotaBytes: quota } = fullest;
  return (
    <Meter
      name={`Database of ${visible(name)}`}
      value={used}
      most={quota}
      text={`${bytes(used)} of ${bytes(quota)}`}
    />
  );
}

export function NearnessMeters({ now }: { now: Stats }) {
  return (
    <>
      <CountMeter limit={now.countLimit} />
      <AgeMeter days={now.ageLimitDays} />
      <Bounded name="Connections" value={now.connections} most={limits.value?.connections} />
      <Bounded name="Waiting readers" value={now.waiting} most={limits.value?.waiting} />
      {now.cluster ? <ClusterSpace cluster={now.cluster} /> : <DatabaseSpace now={now} />}
    </>
  );
}
