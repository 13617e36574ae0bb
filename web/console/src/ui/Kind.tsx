export function Kind({ name }: { name: string }) {
  return (
    <span class="kind" data-kind={name}>
      {name}
    </span>
  );
}
