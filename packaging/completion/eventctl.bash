# Bash completion of eventctl and eventd. Commands, options and what these take are read from
# --help, so they are those of the program that is called.

# Prints the values that one kind of argument has, as --help names it.
_eventsystem_values() {
  local program=$1 kind=$2 word=$3
  case $kind in
    DIR) compgen -d -- "$word" ;;
    FILE) compgen -f -- "$word" ;;
    LEVEL) compgen -W 'off error warning info trace' -- "$word" ;;
    ROLE) compgen -W 'read write admin' -- "$word" ;;
    TYPE) compgen -W "$(_eventsystem_commands "$("$program" add --help 2>/dev/null)")" -- "$word" ;;
  esac
}

# Prints the commands that a help text offers.
_eventsystem_commands() {
  sed -n '/^Subcommands:/,/^$/s/^  \([a-z][a-z-]*\).*/\1/p' <<<"$1"
}

# Prints the long options of a help text, each with the kind of its value, if it takes one.
_eventsystem_options() {
  awk '/^  -/ {
    kind = $0 ~ /^  [^ ]+ [A-Z]+( |$)/ ? $2 : ""
    count = split($1, names, ",")
    for (i = 1; i <= count; ++i) {
      sub(/[{].*/, "", names[i])
      if (names[i] ~ /^--/) print names[i], kind
    }
  }' <<<"$1"
}

# Prints the kind of a help text's first argument.
_eventsystem_argument() {
  sed -nE '/^Positionals:/,/^$/s/^  ([A-Z]+).*/\1/p' <<<"$1" | head -n 1
}

_eventsystem() {
  local program=$1 word=${COMP_WORDS[COMP_CWORD]} global help options kind='' commands i
  global=$("$program" --help 2>/dev/null) || return 0
  help=$global
  options=$(_eventsystem_options "$global")
  local -a path=()
  # What stands before the cursor: the command chosen, and whether an option waits for its value.
  for ((i = 1; i < COMP_CWORD; i++)); do
    local one=${COMP_WORDS[i]}
    if [ -n "$kind" ]; then
      [ "$one" = '=' ] || kind=
    elif [[ $one == --* ]]; then
      kind=$(sed -n "s/^$one //p" <<<"$options")
    elif grep -qxF -e "$one" <<<"$(_eventsystem_commands "$help")"; then
      path+=("$one")
      help=$("$program" "${path[@]}" --help 2>/dev/null) || return 0
      options=$(printf '%s\n' "$options" "$(_eventsystem_options "$help")")
    fi
  done
  if [ "$word" = '=' ]; then word=; fi
  if [ -z "$kind" ] && [[ $word != -* ]]; then
    commands=$(_eventsystem_commands "$help")
    mapfile -t COMPREPLY < <(compgen -W "$commands" -- "$word")
    [ -z "$commands" ] || return 0
    kind=$(_eventsystem_argument "$help")
  fi
  if [ -n "$kind" ]; then
    [[ $kind != DIR && $kind != FILE ]] || compopt -o filenames 2>/dev/null || true
    mapfile -t COMPREPLY < <(_eventsystem_values "$program" "$kind" "$word")
  else
    mapfile -t COMPREPLY < <(compgen -W "$(cut -d ' ' -f 1 <<<"$options" | sort -u)" -- "$word")
  fi
}

complete -F _eventsystem eventctl eventd
