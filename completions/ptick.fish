# Completion of ptick for fish.

# The finished words after the command.
function __ptick_words
    set -l words (commandline -opc)
    string join \n -- $words[2..-1]
end

# Whether the first word is a port or a range of ports: commands for the processes there follow.
function __ptick_sends
    set -l words (__ptick_words)
    string match -qr '^[0-9]+(-[0-9]+)?$' -- "$words[1]"
end

# Whether the first word switches the monitor; with a number, whether the cursor is after that many words.
function __ptick_switches
    set -l words (__ptick_words)
    string match -qr '^-[^fFk]*j' -- "$words[1]"
    and begin
        not set -q argv[1]
        or test (count $words) -eq $argv[1]
    end
end

# The files for the name at the cursor: the word, or what follows the option letters in it. fish puts
# those letters before what is offered here, but would not leave them out when it looks for files.
function __ptick_files
    set -l name (commandline -ct | string replace -r '^-[^fFk]*[fFk]' '')
    complete -C "__ptick_takes_files $name"
end

function __ptick_directories
    __ptick_files | string match -r '^.*/$'
end

complete -c ptick -n '__ptick_sends; or __ptick_switches' -f
complete -c ptick -n '__ptick_switches 1' -a 'ON OFF'
complete -c ptick -n '__ptick_switches 2' -a '%'
complete -c ptick -n '__ptick_switches 3' -F

complete -c ptick -s a -d "Display all ancilliary information."
complete -c ptick -s j -d "Turn ON or OFF KIVA"
complete -c ptick -s f -x -a '(__ptick_directories)' -d "Name of file to extract source from."
complete -c ptick -s F -x -a '(__ptick_files)' -d "List of names of files to extract source from."
complete -c ptick -s i -d "Sort by increasing ticks, rather than decreasing tick."
complete -c ptick -s k -x -a '(__ptick_files)' -d "Name of file to store keyboard INPUT, used by typeplay."
complete -c ptick -s n -d "Subtotalled and sorted by source name"
complete -c ptick -s o -d "Display shared object usage"
complete -c ptick -s p -d "Display programs PERFORM'ed"
complete -c ptick -s s -d "Display list of subroutines called"
complete -c ptick -s t -d "Generate a TYPERATE statement for each INPUT statement"
complete -c ptick -s u -d "Sorted by CPU utilisation"
complete -c ptick -s v -d "Verbose mode"
complete -c ptick -s A -d "ALL, same as -a , -o , -p and -s"
complete -c ptick -s h -d "Print the usage"
