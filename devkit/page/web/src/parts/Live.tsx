import { useState } from "preact/hooks";
import { bankingFlyer, collapseFlyer, endSession, expandFlyer, flyerText } from "../model/Banking";
import { answerPrompt, prompts } from "../model/Elevation";
import { pressButton, shownFlyers } from "../model/Flyers";
import { attempt, dismiss, notices } from "../model/Notices";
import {
  blockDescription, blockShown, cancelExtension, extendDialogOpen, extendTime, extensionMinutes, requestExtension,
} from "../model/TimeLock";
import { counted, fill, text } from "../text/Text";
import { Button } from "./Button";
import { Choice } from "./Choice";
import { Dialog } from "./Dialog";
import { Icon } from "./Icon";

function ElevationDialog({ prompt, client }: { prompt: number; client: string }) {
  const t = text.value.live;
  return (
    <Dialog title={t.elevation} onCancel={() => answerPrompt(prompt, false)}>
      <p>{fill(t.elevationText, client)}</p>
      <div class="buttons">
        <Button onPress={() => answerPrompt(prompt, false)}>{t.refuse}</Button>
        <Button primary onPress={() => answerPrompt(prompt, true)}>{t.allow}</Button>
      </div>
    </Dialog>
  );
}

function BlockDialog() {
  const t = text.value.live;
  return (
    <Dialog title={t.lock} tone="block">
      <p>{blockDescription.value}</p>
      {blockShown.value > 1 && <p class="faint">{counted(t.shownAgain, blockShown.value - 1)}</p>}
      <div class="buttons"><Button primary onPress={requestExtension}>{t.extend}</Button></div>
    </Dialog>
  );
}

function ExtendDialog() {
  const t = text.value;
  const [index, setIndex] = useState(1);
  const cancel = () => attempt(cancelExtension);
  return (
    <Dialog title={t.live.extendTitle} onCancel={cancel}>
      <Choice
        label={t.live.extendLabel}
        value={String(index)}
        options={extensionMinutes.map((minutes, i) => [String(i), fill(t.live.minutes, minutes)])}
        onChoose={(chosen) => setIndex(Number(chosen))}
      />
      <div class="buttons">
        <Button onPress={cancel}>{t.cancel}</Button>
        <Button primary onPress={() => extendTime(index)}>{t.live.extend}</Button>
      </div>
    </Dialog>
  );
}

function BankingFlyer() {
  const t = text.value.banking;
  const collapsed = bankingFlyer.value === "collapsed";
  return (
    <aside class="banking-flyer" aria-label={t.flyer}>
      <Icon name="banking-protection" />
      <div>
        <h2>{t.flyer}</h2>
        {!collapsed && <p>{flyerText.value || t.flyerText}</p>}
      </div>
      <div class="buttons">
        <Button quiet onPress={collapsed ? expandFlyer : collapseFlyer}>{collapsed ? t.show : t.hide}</Button>
        <Button onPress={endSession}>{t.end}</Button>
      </div>
    </aside>
  );
}

function Toasts() {
  const t = text.value;
  return (
    <div class="toasts">
      <div role="region" aria-label={t.live.notifications} aria-live="polite">
        {shownFlyers.value.map(({ id, title, description, buttons }) => (
          <section key={id} class="toast flyer" aria-label={title}>
            <Icon name="bell" />
            <div>
              <h2>{title}</h2>
              <p>{description}</p>
              <div class="buttons">
                {buttons.map(({ caption }, i) => (
                  <Button key={i} primary={i === 0} onPress={() => pressButton(id, i)}>{caption}</Button>
                ))}
              </div>
            </div>
          </section>
        ))}
      </div>
      <div role="region" aria-label={t.frame.notices} aria-live="polite">
        {notices.value.map(({ id, message, kind, action }) => (
          <div key={id} class={`toast ${kind}`} role={kind === "failed" ? "alert" : undefined}>
            <Icon name={kind === "done" ? "check" : "warning"} />
            <p>{message}</p>
            {action && <Button onPress={() => (dismiss(id), action.run())}>{action.label}</Button>}
            <Button quiet label={t.live.dismiss} onPress={() => dismiss(id)}><Icon name="close" /></Button>
          </div>
        ))}
      </div>
    </div>
  );
}

/// What comes by itself, whichever page is open; the lock covers what the suite shows.
export function Live({ locked }: { locked: boolean }) {
  const prompt = prompts.value[0];
  return (
    <>
      <div class="contents" inert={locked}>
        {bankingFlyer.value !== "closed" && <BankingFlyer />}
        <Toasts />
      </div>
      {locked && <BlockDialog />}
      {extendDialogOpen.value && <ExtendDialog />}
      {prompt && <ElevationDialog key={prompt.prompt} {...prompt} />}
    </>
  );
}
