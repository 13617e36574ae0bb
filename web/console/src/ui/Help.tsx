import { shortcuts } from "../state/settings";
import { Dialog } from "./Dialog";
import { helpIsOpen, shortcutTexts } from "./keys";

function licences(): string | undefined {
  return document.querySelector<HTMLLinkElement>("link[rel=license]")?.href;
}

export function Help() {
  const close = () => (helpIsOpen.value = false);
  return (
    <Dialog open={helpIsOpen.value} title="Help" onClose={close}>
      <p>
        This page shows the event queues of this server as they are. It asks for the figures every
        two seconds; events arrive as they are stored.
      </p>
      <table class="shortcuts">
        <caption>Shortcuts</caption>
        <tbody>
          {shortcutTexts.map(([keys, text]) => (
            <tr key={keys}>
              <th scope="row">
                <kbd>{keys}</kbd>
              </th>
              <td>{text}</td>
            </tr>
          ))}
        </tbody>
      </table>
      <label class="choice">
        <input
          type="checkbox"
          checked={shortcuts.value === "on"}
          onChange={(event) => (shortcuts.value = event.currentTarget.checked ? "on" : "off")}
        />
        Shortcuts of single keys
      </label>
      <p class="muted">
        Programs have the same from <a href="/openapi.json">the server's API</a>. Parts of this page
        are the work of others, under <a href={licences()}>their licences</a>.
      </p>
      <div class="actions">
        <button type="button" onClick={close}>
          Close
        </button>
      </div>
    </Dialog>
  );
}
