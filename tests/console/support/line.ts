// The line between browser and server, which a test can cut and mend.
import { connect, createServer, type Server, type Socket } from "node:net";

export class Line {
  private readonly sockets = new Set<Socket>();
  private isCut = false;
  private server: Server;
  url = "";

  constructor(private readonly target: URL) {
    this.server = createServer((near) => this.join(near));
  }

  async open(): Promise<void> {
    await new Promise<void>((resolve) => this.server.listen(0, "127.0.0.1", resolve));
    const address = this.server.address();
    if (address === null || typeof address === "string") throw new Error("no port");
    this.url = `http://127.0.0.1:${address.port}`;
  }

  private join(near: Socket): void {
    if (this.isCut) {
      near.destroy();
      return;
    }
    const far = connect(Number(this.target.port), this.target.hostname);
    for (const [one, other] of [
      [near, far],
      [far, near],
    ] as const) {
      this.sockets.add(one);
      one.pipe(other);
      one.on("error", () => other.destroy());
      one.on("close", () => {
        this.sockets.delete(one);
        other.destroy();
      });
    }
  }

  cut(): void {
    this.isCut = true;
    for (const socket of this.sockets) socket.destroy();
  }

  mend(): void {
    this.isCut = false;
  }

  async close(): Promise<void> {
    this.cut();
    await new Promise((resolve) => this.server.close(resolve));
  }
}
