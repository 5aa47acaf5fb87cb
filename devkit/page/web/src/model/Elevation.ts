import { signal } from "@preact/signals";
import { connection } from "../connection/Connection";

/// The prompts that the plug-in waits for, oldest first.
export const prompts = signal<readonly { prompt: number; client: string }[]>([]);

function close(prompt: number): void {
  prompts.value = prompts.value.filter((open) => open.prompt !== prompt);
}

export function answerPrompt(prompt: number, accept: boolean): void {
  close(prompt);
  connection.tell("elevation.answer", { prompt, accept });
}

connection.on("elevation", ({ prompt, client }) => {
  prompts.value = [...prompts.value, { prompt, client }];
  // Somebody else may answer. The command that the prompt belongs to keeps others waiting: when this one has had its
  // turn, the prompt is over.
  connection
    .request("settle", {})
    .catch(() => undefined)
    .then(() => close(prompt));
});

connection.onConnect(async () => {
  prompts.value = [];
  await connection.request("watch", { topic: "elevation" });
  connection.tell("elevation", { answer: "ask" }); // not awaited: it may have to wait for an open prompt
});
