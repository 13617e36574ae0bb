import { useSignal } from "@preact/signals";
import type { CheckReport, Finding } from "../api/types";
import { visible } from "../events/visible";
import { dateTime, grouped } from "../format";
import { cluster } from "../state/server";
import { askServer, may } from "../state/session";
import { clock } from "../state/settings";
import { announce } from "../ui/announce";
import { Dialog } from "../ui/Dialog";

const checkTime = 10 * 60_000;

const levels: Record<string, string> = { error: "bad", warning: "warn" };

function Findings({ findings }: { findings: Finding[] }) {
  return (
    <table class="data findings">
      <thead>
        <tr>
          <th scope="col">level</th>
          <th scope="col">code</th>
          <th scope="col">what was found</th>
        </tr>
      </thead>
      <tbody>
        {findings.map((finding, index) => (
          <tr key={index}>
            <td>
              <span class={`badge ${levels[finding.level] ?? ""}`}>{finding.level}</span>
            </td>
            <td class="figure">{finding.code}</td>
            <td class="wide">{visible(finding.message)}</td>
          </tr>
        ))}
      </tbody>
    </table>
  );
}

function verdict(report: CheckReport): string {
  const found = report.findings.length;
  const what = report.checked === "database" ? "The database is" : "The queues are";
  if (found === 0) return `${what} in order: nothing was found.`;
  const words = `${grouped(found)} finding${found === 1 ? "" : "s"}`;
  if (!report.fix) return `${words}. Nothing was changed.`;
  if (report.remaining === 0) return `${words}; nothing remains to be repaired.`;
  return `${words}; ${grouped(report.remaining)} could not be repaired.`;
}

function Report({ report, at }: { report: CheckReport; at: number }) {
  const good = report.findings.length === 0 || (report.fix && report.remaining === 0);
  return (
    <>
      <p class={good ? "verdict ok" : "verdict bad"} data-testid="verdict">
        {verdict(report)} <span class="muted">{dateTime(at, clock.value)}</span>
      </p>
      {report.findings.length > 0 ? <Findings findings={report.findings} /> : null}
    </>
  );
}

interface Done {
  report?: CheckReport;
  failure?: string;
  at: number;
}

function useCheck() {
  const busy = useSignal(false);
  const done = useSignal<Done | undefined>(undefined);
  const run = async (fix: boolean) => {
    busy.value = true;
    const at = () => Date.now() / 1000;
    try {
      const options = { method: "POST", body: { fix }, patience: checkTime };
      const report = await askServer<CheckReport>("/v1/check", options);
      done.value = { report, at: at() };
      announce(verdict(report));
    } catch (error) {
      done.value = { failure: error instanceof Error ? error.message : String(error), at: at() };
    }
    busy.value = false;
  };
  return { busy: busy.value, done: done.value, run };
}

function Ask({ open, answer }: { open: boolean; answer: (yes: boolean) => void }) {
  return (
    <Dialog open={open} title="Repair the queues?" onClose={() => answer(false)}>
      <p>
        Rows filed under a wrong id get a new one. Rows whose event string cannot be read are
        deleted. This cannot be undone: copy the database before, should anybody want to look at
        them.
      </p>
      <div class="actions">
        <button type="button" onClick={() => answer(false)}>
          Leave as it is
        </button>
        <button type="button" class="danger" onClick={() => answer(true)}>
          Repair
        </button>
      </div>
    </Dialog>
  );
}

function Checker() {
  const asking = useSignal(false);
  const { busy, done, run } = useCheck();
  const answer = (yes: boolean) => {
    asking.value = false;
    if (yes) void run(true);
  };
  const canRepair = done?.report && done.report.findings.length > 0 && !done.report.fix;
  return (
    <>
      <div class="actions start">
        <button type="button" class="primary" disabled={busy} onClick={() => run(false)}>
          {busy ? "Looking …" : "Look for damage"}
        </button>
        {canRepair ? (
          <button
            type="button"
            class="danger"
            disabled={busy}
            onClick={() => (asking.value = true)}
          >
            Repair …
          </button>
        ) : null}
      </div>
      {done?.failure ? (
        <p class="banner bad" role="alert">
          {done.failure}
        </p>
      ) : null}
      {done?.report ? <Report report={done.report} at={done.at} /> : null}
      <Ask open={asking.value} answer={answer} />
    </>
  );
}

export function CheckView() {
  return (
    <section class="card" aria-labelledby="check-title">
      <h2 id="check-title">Check</h2>
      <p class="muted">
        Looks through all queues for events that cannot be read or are filed under a wrong id.
        Looking changes nothing; a repair asks first.
        {cluster.value
          ? " In cluster mode this is about the database, the copy to fall back to: the cluster keeps its queues itself."
          : ""}
      </p>
      {may("admin") ? <Checker /> : <p>This needs the role admin.</p>}
    </section>
  );
}
