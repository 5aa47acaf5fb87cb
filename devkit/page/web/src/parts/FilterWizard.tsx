import { useState } from "preact/hooks";
import { allCategories, blockedForTeens, withCategories } from "../logic/Categories";
import { attempt } from "../model/Notices";
import { fire, variable } from "../model/Variables";
import { changeFilter, filter } from "../model/WebFilter";
import { text } from "../text/Text";
import { Button } from "./Button";
import { Choice } from "./Choice";
import { Dialog } from "./Dialog";

/// 1: for a child; 0: for a teenager. The plug-in follows the choice with it.
const contentIndex = variable<number>("@ContentControl\\WebPageFilterWizard:wpf_wizard_content_index");

/// Sets the filter up in two steps. Its result is a draft of the page, which is saved there.
export function FilterWizard({ onClose }: { onClose(): void }) {
  const t = text.value;
  const [second, setSecond] = useState(false);
  const [child, setChild] = useState(contentIndex.value === 1);
  const choose = (wanted: "child" | "teen") => {
    setChild(wanted === "child");
    attempt(() => fire(`@ContentControl\\Triggers:web_page_filter_${wanted}mode`));
  };
  const finish = () => {
    const all = withCategories(filter.value.categories, allCategories, true);
    changeFilter(child ? { byCategory: false } : { byCategory: true, categories: withCategories(all, blockedForTeens, false) });
    onClose();
  };
  return (
    <Dialog title={t.filter.wizard} onCancel={onClose}>
      {!second && (
        <Choice
          label={t.filter.wizardLead}
          value={child ? "child" : "teen"}
          options={[
            ["child", ...t.filter.wizardChild],
            ["teen", ...t.filter.wizardTeen],
          ]}
          onChoose={choose}
        />
      )}
      {second && <p>{child ? t.filter.wizardChildNext : t.filter.wizardBlocks}</p>}
      {second && !child && (
        <ul class="chips">{blockedForTeens.map((category) => <li key={category}>{t.categories[category]}</li>)}</ul>
      )}
      <div class="buttons">
        <Button onPress={second ? () => setSecond(false) : onClose}>{second ? t.filter.wizardBack : t.cancel}</Button>
        <Button primary onPress={second ? finish : () => setSecond(true)}>
          {second ? t.filter.wizardFinish : t.filter.wizardNext}
        </Button>
      </div>
    </Dialog>
  );
}
