import { useEffect, useMemo, useState } from "preact/hooks";
import { attempt } from "../model/Notices";
import { beginRecording, endRecording, recorded, recording } from "../model/Recording";
import { Card, Page } from "../parts/Page";
import { Tools } from "../parts/Tools";

/// An address of the text, for as long as it is shown.
function useDownload(text: string): string {
  const address = useMemo(() => URL.createObjectURL(new Blob([text], { type: "application/jsonl" })), [text]);
  useEffect(() => () => URL.revokeObjectURL(address), [address]);
  return address;
}

function Recorded({ text, lines }: { text: string; lines: number }) {
  const address = useDownload(text);
  return (
    <Card title="Last recording">
      <p>
        {lines.toLocaleString("en")} lines. <code>veridan-host --replay recording.jsonl</code> carries it out again.
      </p>
      <a class="button primary" href={address} download="recording.jsonl">
        Download
      </a>
      <textarea class="code" aria-label="Text of the recording" rows={20} readOnly wrap="off" value={text} />
    </Card>
  );
}

export function RecordingPanel() {
  const [fresh, setFresh] = useState(true);
  const last = recorded.value;
  return (
    <Page title="Recording" lead="What is asked for and what the plug-in does, as text that can be replayed.">
      <Tools>
        {recording.value ? (
          <button type="button" class="button primary" onClick={() => attempt(endRecording)}>
            End recording
          </button>
        ) : (
          <button type="button" class="button" onClick={() => attempt(() => beginRecording(fresh))}>
            Record
          </button>
        )}
        <label>
          <input type="checkbox" checked={fresh} onChange={(event) => setFresh(event.currentTarget.checked)} /> From a
          fresh start of the plug-in
        </label>
      </Tools>
      {last?.text !== undefined && <Recorded text={last.text} lines={last.lines} />}
      {last?.file !== undefined && <p>The recording is in {last.file}.</p>}
    </Page>
  );
}
