// Characters that a page would hide, or that would turn the text around them, made visible.

const control = String.raw`\u0000-\u001f\u007f-\u009f`;
const turning = String.raw`\u061c\u200b-\u200f\u2028-\u202e\u2060-\u2069\ufeff`;
const hidden = new RegExp(`[${control}${turning}]`, "g");

function name(character: string): string {
  const code = character.charCodeAt(0);
  if (code < 0x20) return String.fromCharCode(0x2400 + code);
  if (code === 0x7f) return "\u2421";
  return `<U+${code.toString(16).toUpperCase().padStart(4, "0")}>`;
}

export function visible(text: string): string {
  return text.replace(hidden, name);
}
