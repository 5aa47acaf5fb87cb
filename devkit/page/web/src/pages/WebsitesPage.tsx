import { useEffect, useState } from "preact/hooks";
import { storedForm } from "../logic/Address";
import { plugInRuns } from "../model/PlugIn";
import { connection } from "../connection/Connection";
import { attempt } from "../model/Notices";
import { changing } from "../model/Rights";
import {
  addWebsite, clearWebsites, closeWebsites, deniedEnabled, editWebsite, removeWebsite, showWebsites, websites, working,
  type ListName, type WebsiteRow,
} from "../model/Websites";
import { Button } from "../parts/Button";
import { Dialog } from "../parts/Dialog";
import { Icon } from "../parts/Icon";
import { Card, Page } from "../parts/Page";
import { Rows } from "../parts/Rows";
import { FilterField } from "../parts/Tools";
import { fill, numbers, text } from "../text/Text";

/// Why an address cannot go into a list; nothing where it can.
function problemOf(name: ListName, typed: string, except?: string): string | undefined {
  const t = text.value.websites;
  const stored = storedForm(typed);
  if (!stored) return t.invalid;
  const present = websites[name].value.some((row) => row.stored === stored && !row.byAdministrator);
  return present && stored !== except ? t.present : undefined;
}

interface AddressFieldProps {
  label: string;
  typed: string;
  problem: string | undefined;
  id: string;
  onType(typed: string): void;
}

function AddressField({ label, typed, problem, id, onType }: AddressFieldProps) {
  const t = text.value.websites;
  const stored = storedForm(typed);
  const note = problem ?? (stored && stored !== typed.trim() ? fill(t.storedAs, stored) : undefined);
  return (
    <div class="field">
      <label for={id}>{label}</label>
      <input
        id={id}
        type="text"
        inputMode="url"
        autoComplete="off"
        spellcheck={false}
        placeholder={t.addHint}
        value={typed}
        aria-invalid={problem !== undefined}
        aria-describedby={note ? `${id}note` : undefined}
        onInput={(event) => onType(event.currentTarget.value)}
      />
      {note && (
        <p id={`${id}note`} class={problem ? "problem" : "faint"} role={problem ? "alert" : undefined}>{note}</p>
      )}
    </div>
  );
}

function AddForm({ name }: { name: ListName }) {
  const t = text.value;
  const [typed, setTyped] = useState("");
  const [problem, setProblem] = useState<string | undefined>(undefined);
  const add = async () => {
    const found = problemOf(name, typed);
    setProblem(found);
    if (found) return;
    setTyped(""); // for the next one, which may be typed before this one is in the list
    if (!(await addWebsite(name, typed.trim(), storedForm(typed)!))) setTyped((next) => next || typed);
  };
  return (
    <form
      class="add"
      noValidate
      onSubmit={(event) => {
        event.preventDefault();
        attempt(add);
      }}
    >
      <AddressField
        label={t.websites.addLabel}
        id={`add-${name}`}
        typed={typed}
        problem={problem}
        onType={(next) => {
          setTyped(next);
          setProblem(undefined);
        }}
      />
      <button class="button primary">{t.add}</button>
    </form>
  );
}

function EditDialog({ name, row, onClose }: { name: ListName; row: WebsiteRow; onClose(): void }) {
  const t = text.value;
  const [typed, setTyped] = useState(row.readable ?? row.stored);
  const [problem, setProblem] = useState<string | undefined>(undefined);
  const save = () => {
    const found = problemOf(name, typed, row.stored);
    setProblem(found);
    if (found) return;
    onClose();
    if (storedForm(typed) !== row.stored)
      attempt(() => editWebsite(name, row.stored, typed.trim()).then(() => undefined));
  };
  return (
    <Dialog title={t.websites.editTitle} onCancel={onClose}>
      <form
        noValidate
        onSubmit={(event) => {
          event.preventDefault();
          save();
        }}
      >
        <AddressField label={t.websites.editLabel} id={`edit-${name}`} typed={typed} problem={problem} onType={setTyped} />
        <div class="buttons">
          <Button onPress={onClose}>{t.cancel}</Button>
          <button class="button primary">{t.save}</button>
        </div>
      </form>
    </Dialog>
  );
}

function Row({ name, row, onEdit }: { name: ListName; row: WebsiteRow; onEdit(): void }) {
  const t = text.value;
  const shown = row.readable ?? row.stored;
  const remove = () => removeWebsite(name, row.stored);
  return (
    <>
      <td>
        <span class="address">{shown}</span>
        {row.readable && <span class="faint stored">{row.stored}</span>}
      </td>
      <td class="actions">
        {row.byAdministrator ? (
          <span class="tag">
            <Icon name="lock" />
            {t.websites.admin}
          </span>
        ) : (
          <>
            <Button quiet label={`${t.edit} ${shown}`} disabled={working.value} onPress={onEdit}>{t.edit}</Button>
            <Button quiet label={`${t.remove} ${shown}`} disabled={working.value} onPress={remove}>{t.remove}</Button>
          </>
        )}
      </td>
    </>
  );
}

function WebsiteList({ name }: { name: ListName }) {
  const t = text.value;
  const [search, setSearch] = useState("");
  const [edited, setEdited] = useState<WebsiteRow | undefined>(undefined);
  const all = websites[name].value;
  const hasOwn = all.some((row) => !row.byAdministrator);
  const wanted = search.trim().toLowerCase();
  const rows = wanted
    ? all.filter((row) => row.stored.toLowerCase().includes(wanted) || row.readable?.toLowerCase().includes(wanted))
    : all;
  return (
    <Card title={t.websites[name]} class="websites">
      {name === "denied" && !deniedEnabled.value ? <p class="faint">{t.websites.deniedOff}</p> : (
        <AddForm name={name} />
      )}
      <div class="tools">
        <FilterField label={t.websites.searchLabel} value={search} onFilter={setSearch} />
        <span class="faint count">
          {all.length === 1 ? t.websites.one : fill(t.websites.counted, numbers.value.format(all.length))}
        </span>
        <Button disabled={working.value || !hasOwn} onPress={() => clearWebsites(name)}>{t.websites.clear}</Button>
      </div>
      <Rows
        label={t.websites[name]}
        heads={[t.websites.address, t.websites.actions]}
        rows={rows}
        keyOf={(row) => row.stored}
        none={all.length === 0 ? t.websites.empty : t.websites.noneFound}
        render={(row) => <Row name={name} row={row} onEdit={() => setEdited(row)} />}
      />
      {edited && <EditDialog name={name} row={edited} onClose={() => setEdited(undefined)} />}
    </Card>
  );
}

export function WebsitesPage() {
  const t = text.value;
  // Rights that another page was given end with it, before this one opens.
  const shown = connection.state.value === "connected" && plugInRuns.value && !changing.value;
  useEffect(() => {
    if (!shown) return undefined;
    attempt(showWebsites);
    return () => void closeWebsites().catch(() => undefined);
  }, [shown]);
  return (
    <Page title={t.routes.websites} lead={t.websites.lead}>
      <div class="columns wide" aria-busy={working.value}>
        <WebsiteList name="allowed" />
        <WebsiteList name="denied" />
      </div>
      {working.value && <progress class="working" aria-label={t.websites.working} />}
    </Page>
  );
}
