# Fish completion of eventctl and eventd. Commands, options and what these take are read from
# --help, so they are those of the program that is called.

# Prints the commands of a help text with what they do, as fish wants it.
function __eventsystem_commands
    set -l inside 0
    for line in $argv
        if test $line = Subcommands:
            set inside 1
        else if test -z $line
            set inside 0
        else if test $inside = 1
            string replace -rf '^  ([a-z][a-z-]*) +(.*)$' '$1\t$2' -- $line
        end
    end
end

# Prints the long options of a help text, each with its description, or with the kind of value that
# it takes where $argv[1] is "kind".
function __eventsystem_options
    for line in $argv[2..]
        set -l parts (string replace -rf '^  (-\S+)(?: ([A-Z]+)(?: REQUIRED)?(?= |$))?(?: +(.*))?$' \
            '$1\t$2\t$3' -- $line | string split -m 2 \t)
        or continue
        for name in (string split , -- $parts[1])
            string match -q -- '--*' $name
            or continue
            set -l words $parts[3]
            test $argv[1] = kind
            and set words $parts[2]
            printf '%s\t%s\n' (string replace -r '{.*' '' -- $name) "$words"
        end
    end
end

# Prints what may stand at the cursor.
function __eventsystem_offers
    set -l words (commandline -opc)
    set -l program $words[1]
    set -l help ($program --help 2>/dev/null)
    or return
    set -l options $help
    set -l path
    set -l kind
    for one in $words[2..]
        if test -n "$kind"
            set kind
        else if string match -q -- '--*' $one
            set kind (__eventsystem_options kind $options | string replace -rf "^$one\t(.+)" '$1')
        else if string match -qr "^$one\t" -- (__eventsystem_commands $help)
            set -a path $one
            set help ($program $path --help 2>/dev/null)
            or return
            set -a options $help
        end
    end
    if test -z "$kind"
        __eventsystem_options words $options
        set -l commands (__eventsystem_commands $help)
        if test -n "$commands"
            printf '%s\n' $commands
            return
        end
        string match -qr '^  FILE' -- $help
        and set kind FILE
    end
    switch "$kind"
        case DIR
            __fish_complete_directories (commandline -ct)
        case FILE
            __fish_complete_path (commandline -ct)
        case LEVEL
            printf '%s\n' off error warning info trace
        case ROLE
            printf '%s\n' read write admin
        case TYPE
            __eventsystem_commands ($program add --help 2>/dev/null)
    end
end

complete -c eventctl -c eventd -f -a '(__eventsystem_offers)'
