# fish completion for orvista-editor; made from its help

complete -c orvista-editor -f
complete -c orvista-editor -s h -l help -d 'Displays help on commandline options'
complete -c orvista-editor -l help-all -d 'Displays help including Qt specific options'
complete -c orvista-editor -s v -l version -d 'Displays version information'
complete -c orvista-editor -l columns -x -d 'Dots across the previewed display, 32 to 512 (128)'
complete -c orvista-editor -k -a '(__fish_complete_suffix .orx)'
