import { addressOf } from "../model/Route";
import { blockShown } from "../model/TimeLock";
import { Icon } from "./Icon";

/// What a developer should not forget, whichever page or panel is open.
export function InSight({ onPanel }: { onPanel: boolean }) {
  return (
    <div class="in-sight" role="status" lang="en">
      {onPanel && blockShown.value > 0 && (
        <p class="note warning">
          <Icon name="lock" />
          <span>The suite's pages are locked.</span>
          <a href={addressOf("main")}>Show</a>
        </p>
      )}
    </div>
  );
}
