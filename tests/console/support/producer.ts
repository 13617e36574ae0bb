// A service that writes to the queues, and deletes what it has read.
import type { Server } from "./server";

export class Producer {
  constructor(private readonly server: Server) {}

  private async request(method: string, path: string, body?: string, type = "application/json") {
    const response = await fetch(`${this.server.url}/v1/queues/${path}`, {
      method,
      headers: { Authorization: `Bearer ${this.server.admin}`, "Content-Type": type },
      body,
    });
    return { status: response.status, ok: response.ok, text: await response.text() };
  }

  private async demand(method: string, path: string, body?: string, type?: string) {
    const { ok, status, text } = await this.request(method, path, body, type);
    if (!ok) throw new Error(`${method} ${path}: ${status} ${text}`);
    return text;
  }

  // Sends the body as it stands, for numbers that JavaScript does not hold.
  async sendText(body: string, dsid = "0", type?: string): Promise<string[]> {
    const text = await this.demand("POST", `${dsid}/events`, body, type);
    return (/"ids":\s*\[([^\]]*)\]/.exec(text)?.[1] ?? "").split(",").map((id) => id.trim());
  }

  async send(kind: string, fields: Record<string, unknown>, dsid = "0"): Promise<string> {
    const [id] = await this.sendText(JSON.stringify({ kind, fields }), dsid);
    return id ?? "";
  }

  sendLegacy(payload: string, dsid = "0"): Promise<string> {
    return this.send("legacy", { payload }, dsid);
  }

  sendStrings(eventStrings: string[], dsid = "0"): Promise<string[]> {
    return this.sendText(`${eventStrings.join("\n")}\n`, dsid, "text/plain");
  }

  // A data selection that is there already is good, too.
  async addQueue(dsid: string, what: { name?: string; type?: number } = {}): Promise<void> {
    const { ok, status, text } = await this.request("PUT", dsid, JSON.stringify(what));
    if (!ok && status !== 409) throw new Error(text);
  }

  // The ids of the oldest events.
  async oldest(count: number, dsid = "0"): Promise<string[]> {
    const text = await this.demand("GET", `${dsid}/events?limit=${count}`);
    const { events } = JSON.parse(text) as { events: { id: number }[] };
    return events.map((event) => String(event.id));
  }

  async remove(id: string, dsid = "0"): Promise<void> {
    await this.demand("DELETE", `${dsid}/events/${id}`);
  }

  async removeUpTo(id: string, dsid = "0"): Promise<void> {
    await this.demand("DELETE", `${dsid}/events?upto=${id}`);
  }
}
