import type { ClusterMember } from "../api/types";
import { visible } from "../events/visible";
import { bytes } from "../format";
import { stats } from "../state/server";
import { Meter, NoMeter } from "../ui/Meter";

function Space({ member }: { member: ClusterMember }) {
  const { databaseBytes: used, quotaBytes: quota, databaseBytesInUse: inUse } = member;
  const name = "database";
  if (quota === 0) return <NoMeter name={name} text={bytes(used)} />;
  return (
    <>
      <Meter name={name} value={used} most={quota} text={`${bytes(used)} of ${bytes(quota)}`} />
      <p class="note">{bytes(inUse)} in use</p>
    </>
  );
}

function Member({ member }: { member: ClusterMember }) {
  const role = member.reachable ? (member.leader ? "leader" : "member") : "not reachable";
  const level = member.reachable ? (member.leader ? "accent" : "") : "bad";
  return (
    <li class="card">
      <div class="card-head">
        <h3>{visible(member.name || member.endpoint)}</h3>
        <span class={`badge ${level}`}>{role}</span>
      </div>
      <p class="muted">
        {visible(member.endpoint)}
        {member.version ? `, version ${visible(member.version)}` : ""}
      </p>
      {member.reachable ? <Space member={member} /> : null}
      {member.failure ? <p class="problem">{visible(member.failure)}</p> : null}
    </li>
  );
}

export function ClusterView() {
  const cluster = stats.value?.cluster;
  if (!cluster) {
    return (
      <section class="card" aria-labelledby="cluster-title">
        <h2 id="cluster-title">Cluster</h2>
        <p class="muted">This server keeps its queues in its own database; it is in no cluster.</p>
      </section>
    );
  }
  return (
    <section aria-labelledby="cluster-title">
      <h2 id="cluster-title" class="page-title">
        Cluster
      </h2>
      {cluster.failure ? (
        <p class="banner bad" role="alert">
          {visible(cluster.failure)}
        </p>
      ) : null}
      {cluster.alarms.map((alarm) => (
        <p key={alarm} class="banner warn">
          <strong>Alarm:</strong> {visible(alarm)}
        </p>
      ))}
      <ul class="members">
        {cluster.members.map((member) => (
          <Member key={member.endpoint} member={member} />
        ))}
      </ul>
    </section>
  );
}
