// Server-sent events read from a fetch, because EventSource cannot carry an Authorization header.

export interface Message {
  id: string;
  data: string;
}

// Puts messages together from pieces of the stream, wherever they were cut.
export class MessageReader {
  private rest = "";
  private id = "";
  private data: string[] = [];

  feed(piece: string): Message[] {
    const lines = (this.rest + piece).split(/\r\n|\n|\r(?!$)/);
    this.rest = lines.pop() ?? "";
    const messages: Message[] = [];
    for (const line of lines) {
      const message = this.take(line);
      if (message) messages.push(message);
    }
    return messages;
  }

  private take(line: string): Message | undefined {
    if (line === "") {
      const message =
        this.data.length > 0 ? { id: this.id, data: this.data.join("\n") } : undefined;
      this.data = [];
      return message;
    }
    const colon = line.indexOf(":");
    const field = colon < 0 ? line : line.slice(0, colon);
    const value = colon < 0 ? "" : line.slice(colon + 1).replace(/^ /, "");
    if (field === "data") this.data.push(value);
    if (field === "id") this.id = value;
    return undefined;
  }
}

// Reads until the stream ends. `onLife` is called for whatever arrives, comments included.
export async function readMessages(
  body: ReadableStream<Uint8Array>,
  onMessages: (messages: Message[]) => unknown,
  onLife: () => void,
): Promise<void> {
  const bytes = body.getReader();
  const decoder = new TextDecoder();
  const reader = new MessageReader();
  for (;;) {
    const { done, value } = await bytes.read();
    if (done) return;
    onLife();
    const messages = reader.feed(decoder.decode(value, { stream: true }));
    if (messages.length > 0) onMessages(messages);
  }
}
