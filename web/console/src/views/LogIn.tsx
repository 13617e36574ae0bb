import { useEffect, useRef, useState } from "preact/hooks";
import { logIn, refusal } from "../state/session";

export function LogIn() {
  const [text, setText] = useState("");
  const [busy, setBusy] = useState(false);
  const field = useRef<HTMLInputElement>(null);
  useEffect(() => field.current?.focus(), []);
  const submit = async (event: Event) => {
    event.preventDefault();
    setBusy(true);
    await logIn(text);
    setBusy(false);
    field.current?.select();
  };
  return (
    <form class="log-in card" onSubmit={submit}>
      <h2>Log in</h2>
      <label for="token">Token</label>
      <input
        id="token"
        ref={field}
        type="password"
        autocomplete="off"
        spellcheck={false}
        required
        value={text}
        aria-invalid={refusal.value !== ""}
        aria-describedby="token-refusal token-help"
        onInput={(event) => setText(event.currentTarget.value)}
      />
      <p id="token-refusal" class="refusal" role="alert">
        {refusal.value}
      </p>
      <button type="submit" class="primary" disabled={busy}>
        Log in
      </button>
      <p id="token-help" class="muted">
        The server's administrator makes one with
        <br />
        <code>eventctl token add NAME --role read</code>
        <br />
        It is kept until this tab is closed.
      </p>
    </form>
  );
}
