import type { ClusterMember } from "../api/types";
import { visible } from "../events/visible";
import { bytes } from "../format";
import { cluster } from "../state/server";
import { Meter, NoMeter } from "../ui/Meter";

function Space({ member }: { member: ClusterMember }) {
  const { databaseBytes: used, quotaBytes: quota, databaseBytesInUse: inUse } = member;
  const name = "Database";
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
      {member.name ? (
        <p class="muted">
          {visible(member.endpoint)}, version {visible(member.version)}
        </p>
      ) : null}
      {member.reachable ? <Space member={member} /> : null}
      {member.failure ? <p class="problem">{visible(member.failure)}</p> : null}
    </li>
  );
}

function verdict(members: ClusterMember[]): string {
  const answering = members.filter((member) => member.reachable);
  const needed = Math.floor(members.length / 2) + 1;
  const leaderless = answering.some((member) => member.leader) ? "" : " None of them leads.";
  return `${answering.length} of ${members.length} members answer; ${needed} are needed.${leaderless}`;
}

export function ClusterView() {
  const known = cluster.value;
  if (!known) {
    return (
      <section class="card" aria-labelledby="cluster-title">
        <h2 id="cluster-title">Cluster</h2>
        <p class="muted">This server keeps its queues in its own database; it is in no cluster.</p>
      </section>
    );
  }
  return (
    <section aria-labelledby="cluster-title">
      <h2 id="cluster-title">Cluster</h2>
      <p class="page-note" data-testid="quorum">
        {verdict(known.members)}
      </p>
      {known.failure ? (
        <p class="banner bad" role="alert">
          {visible(known.failure)}
        </p>
      ) : null}
      {known.alarms.map((alarm) => (
        <p key={alarm} class="banner warn">
          <strong>Alarm:</strong> {visible(alarm)}
        </p>
      ))}
      <ul class="members">
        {known.members.map((member) => (
          <Member key={member.endpoint} member={member} />
        ))}
      </ul>
    </section>
  );
}
