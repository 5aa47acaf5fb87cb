import { createHash, randomBytes } from "node:crypto";
import { once } from "node:events";
import { connect, type Socket } from "node:net";

/// What a server answered to a request that was sent byte for byte.
export async function exchange(port: number, request: string): Promise<string> {
  const socket = connect(port, "127.0.0.1");
  let received = "";
  socket.on("data", (data: Buffer) => (received += data.toString("latin1")));
  socket.on("error", () => undefined);
  socket.write(request);
  await once(socket, "close");
  return received;
}

export function get(path: string, headers: readonly string[]): string {
  return [`GET ${path} HTTP/1.1`, ...headers, "", ""].join("\r\n");
}

/// A WebSocket of few words, which can send what a browser never would, and stop reading.
export class Wire {
  private received = Buffer.alloc(0);
  readonly messages: string[] = [];
  readonly closed: Promise<number>;

  private constructor(private readonly socket: Socket) {
    let close: (code: number) => void;
    this.closed = new Promise((resolve) => (close = resolve));
    socket.on("data", (data: Buffer) => {
      this.received = Buffer.concat([this.received, data]);
      for (let code = this.read(); code !== undefined; code = this.read()) if (code > 0) close(code);
    });
    socket.on("error", () => undefined);
    socket.on("close", () => close(0));
  }

  static async open(port: number): Promise<Wire> {
    const socket = connect(port, "127.0.0.1");
    const key = randomBytes(16).toString("base64");
    socket.write(get("/socket", [
      `Host: 127.0.0.1:${port}`, "Upgrade: websocket", "Connection: Upgrade", `Sec-WebSocket-Key: ${key}`,
      "Sec-WebSocket-Version: 13",
    ]));
    const [head] = (await once(socket, "data")) as [Buffer];
    const accept = createHash("sha1").update(`${key}258EAFA5-E914-47DA-95CA-C5AB0DC85B11`).digest("base64");
    if (!head.toString("latin1").includes(accept)) throw new Error(head.toString("latin1"));
    return new Wire(socket);
  }

  send(text: string): void {
    const payload = Buffer.from(text);
    const mask = randomBytes(4);
    const head = payload.length < 126 ? [0x81, 0x80 | payload.length] : [0x81, 0xfe, payload.length >> 8, payload.length & 255];
    this.socket.write(Buffer.concat([Buffer.from(head), mask, payload.map((byte, i) => byte ^ mask[i % 4]!)]));
  }

  /// The next messages' end, as the server sent it, or 0 where the connection just ended.
  stopReading(): void {
    this.socket.pause();
  }

  readOn(): void {
    this.socket.resume();
  }

  end(): void {
    this.socket.destroy();
  }

  /// One frame: 0 for a message, a close frame's code, nothing where it is not complete.
  private read(): number | undefined {
    const [first, second] = this.received;
    if (first === undefined || second === undefined) return undefined;
    const start = second < 126 ? 2 : second === 126 ? 4 : 10;
    if (this.received.length < start) return undefined;
    const length = second < 126 ? second : second === 126 ? this.received.readUInt16BE(2) : Number(this.received.readBigUInt64BE(2));
    if (this.received.length < start + length) return undefined;
    const payload = this.received.subarray(start, start + length);
    this.received = this.received.subarray(start + length);
    if ((first & 15) === 8) return payload.length > 1 ? payload.readUInt16BE(0) : 1005;
    if ((first & 15) === 1) this.messages.push(payload.toString());
    return 0;
  }
}
