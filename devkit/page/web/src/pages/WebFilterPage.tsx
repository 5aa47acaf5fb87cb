import { signal } from "@preact/signals";
import {
  allCategories, categoryGroups, groupNames, withCategories, type CategoryGroup, type CategoryKey,
} from "../logic/Categories";
import { attempt } from "../model/Notices";
import { isEnforced } from "../model/Settings";
import { fire, variable } from "../model/Variables";
import { changeFilter, discardFilter, filter, filterChanged, fragfinnOffered, saveFilter } from "../model/WebFilter";
import { Button } from "../parts/Button";
import { Choice } from "../parts/Choice";
import { FilterWizard } from "../parts/FilterWizard";
import { Icon } from "../parts/Icon";
import { Card, Page, SaveBar } from "../parts/Page";
import { Switch } from "../parts/Switch";
import { FilterField } from "../parts/Tools";
import { fill, text } from "../text/Text";

const filterStatus = variable<string>("@ContentControl\\Status:current_user_web_page_filter_status");
const wizardOpen = signal(false);
const search = signal("");

const keyOf = (category: CategoryKey) => `common.content.allowed_categories.${category}`;

function setCategories(keys: readonly CategoryKey[], allowed: boolean): void {
  const free = keys.filter((key) => !isEnforced("user", keyOf(key)));
  changeFilter({ categories: withCategories(filter.value.categories, free, allowed) });
}

function CategoryRow({ category }: { category: CategoryKey }) {
  const t = text.value;
  const locked = isEnforced("user", keyOf(category));
  const allowed = filter.value.categories[category] !== false;
  return (
    <li class={allowed ? "category" : "category blocked"}>
      <label>
        <input
          type="checkbox"
          checked={allowed}
          disabled={locked}
          onChange={(event) => setCategories([category], event.currentTarget.checked)}
        />
        {t.categories[category]}
      </label>
      {locked && (
        <span class="tag" title={t.lockedByAdministrator}>
          <Icon name="lock" />
          <span class="hidden">{t.lockedByAdministrator}</span>
        </span>
      )}
    </li>
  );
}

function Group({ group, shown }: { group: CategoryGroup; shown: readonly CategoryKey[] }) {
  const t = text.value.filter;
  const all = categoryGroups[group];
  const allowed = all.filter((key) => filter.value.categories[key] !== false).length;
  const change = allowed === 0 ? t.allowAll : t.blockAll;
  if (shown.length === 0) return null;
  return (
    <fieldset class="category-group">
      <legend>{t.groups[group]}</legend>
      <div class="group-head">
        <span class="faint">{fill(t.counted, allowed, all.length)}</span>
        <Button quiet label={`${change}: ${t.groups[group]}`} onPress={() => setCategories(all, allowed === 0)}>{change}</Button>
      </div>
      <ul>{shown.map((category) => <CategoryRow key={category} category={category} />)}</ul>
    </fieldset>
  );
}

function Categories() {
  const t = text.value;
  const wanted = search.value.trim().toLocaleLowerCase();
  const matches = (category: CategoryKey) => t.categories[category].toLocaleLowerCase().includes(wanted);
  return (
    <Card title={t.filter.categories}>
      <div class="tools">
        <FilterField label={t.filter.searchCategories} value={search.value} onFilter={(words) => (search.value = words)} />
        <Button onPress={() => setCategories(allCategories, true)}>{t.filter.allowAll}</Button>
        <Button onPress={() => setCategories(allCategories, false)}>{t.filter.blockAll}</Button>
      </div>
      <div class="category-groups">
        {groupNames.map((group) => <Group key={group} group={group} shown={categoryGroups[group].filter(matches)} />)}
      </div>
      {!allCategories.some(matches) && <p class="faint">{t.filter.noneFound}</p>}
    </Card>
  );
}

function ChildrensMode() {
  const t = text.value.filter;
  return (
    <Card class="rows">
      {fragfinnOffered.value && (
        <Switch
          label={t.fragfinn[0]!}
          lead={t.fragfinn[1]}
          on={filter.value.fragfinn}
          locked={isEnforced("user", "windows.browsing_protection.fragfinn.enabled")}
          onMove={(fragfinn) => changeFilter({ fragfinn })}
        />
      )}
      <p><Button onPress={() => fire("@ContentControl\\Triggers:show_fragfinn_sites")}>{t.fragfinnOpen}</Button></p>
    </Card>
  );
}

export function WebFilterPage() {
  const t = text.value;
  return (
    <Page title={t.routes["web-page-filter"]} lead={t.filter.lead}>
      <Card class="line">
        <p>{t.filter.state} <strong>{filterStatus.value === "On" ? t.on : t.off}</strong></p>
        <Button onPress={() => (wizardOpen.value = true)}>{t.filter.wizard}</Button>
      </Card>
      <Choice
        label={t.filter.modes.label}
        value={filter.value.byCategory ? "categories" : "child"}
        options={[
          ["categories", ...t.filter.modes.categories],
          ["child", ...t.filter.modes.child],
        ]}
        onChoose={(mode) => changeFilter({ byCategory: mode === "categories" })}
      />
      {filter.value.byCategory ? <Categories /> : <ChildrensMode />}
      {filterChanged.value && <SaveBar onSave={() => attempt(saveFilter)} onDiscard={discardFilter} />}
      {wizardOpen.value && <FilterWizard onClose={() => (wizardOpen.value = false)} />}
    </Page>
  );
}
