# Completion of ptick-merge for fish.

complete -c ptick-merge -l files-from -r -F -d "merge the profiles that the file LIST names, one a line"
complete -c ptick-merge -l files0-from -r -F -d "merge the profiles that the file LIST names, each name ended by a zero byte"
complete -c ptick-merge -s k -l keep-going -d "leave out what cannot be read or has a record of an unknown type, each such profile whole; the exit status is 1 then"
complete -c ptick-merge -l program -x -d "begin with a record that names TEXT as the program that ran"
complete -c ptick-merge -s o -l output -r -F -d "write the result to FILE, whole or not at all; '-' is standard output"
complete -c ptick-merge -s q -l quiet -d "show no progress"
complete -c ptick-merge -l color -x -a "auto always never" -d "use colour: auto (on a terminal), always or never"
complete -c ptick-merge -s h -l help -d "show this help and end"
complete -c ptick-merge -s V -l version -d "show the version and end"
