// JSON with whole numbers of 64 bits. JavaScript's numbers are exact up to 2^53 only, so a whole
// number beyond that comes back as the text of its digits, as it was sent.

export type Integer = number | string;

// A string (passed over as it is) or a number; within valid JSON nothing else can match.
const tokens = /"[^"\\]*(?:\\.[^"\\]*)*"|-?\d+(?:\.\d+)?(?:[eE][+-]?\d+)?/g;

function exact(token: string): string {
  if (token.length < 16 || !/^-?\d+$/.test(token)) return token;
  return Number.isSafeInteger(Number(token)) ? token : `"${token}"`;
}

export function parseJson<T>(text: string): T {
  return JSON.parse(text.replace(tokens, exact)) as T;
}

// Ids are compared and counted as what they are, whatever they came as.

export function compareIntegers(a: Integer, b: Integer): number {
  const left = BigInt(a);
  const right = BigInt(b);
  return left < right ? -1 : left > right ? 1 : 0;
}

export function minus(a: Integer, b: number): string {
  const difference = BigInt(a) - BigInt(b);
  return (difference > 0n ? difference : 0n).toString();
}
