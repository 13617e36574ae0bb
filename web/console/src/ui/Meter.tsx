// How near something is to its limit.

interface Props {
  name: string;
  value: number;
  most: number;
  text: string;
}

export function Meter({ name, value, most, text }: Props) {
  const share = most > 0 ? Math.min(1, Math.max(0, value / most)) : 0;
  const level = share >= 0.9 ? "bad" : share >= 0.7 ? "warn" : "ok";
  return (
    <div class={`meter ${level}`}>
      <div class="meter-text">
        <span>{name}</span>
        <span class="figure">{text}</span>
      </div>
      <div
        class="bar"
        role="meter"
        aria-label={name}
        aria-valuemin={0}
        aria-valuemax={most}
        aria-valuenow={Math.min(value, most)}
        aria-valuetext={text}
      >
        <div style={{ width: `${100 * share}%` }} />
      </div>
    </div>
  );
}

export function NoMeter({ name, text }: { name: string; text: string }) {
  return (
    <div class="meter">
      <div class="meter-text">
        <span>{name}</span>
        <span class="figure muted">{text}</span>
      </div>
    </div>
  );
}
