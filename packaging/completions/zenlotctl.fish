# Completion of zenlotctl for fish.
complete -c zenlotctl -f
complete -c zenlotctl -n __fish_use_subcommand -a list -d 'Every port that is listened on'
complete -c zenlotctl -n __fish_use_subcommand -a check -d 'Who holds one port'
complete -c zenlotctl -n __fish_use_subcommand -a why -d 'Which server listens on one port, and where it comes from'
complete -c zenlotctl -n __fish_use_subcommand -a stop -d 'Stop the server on one port, so that it stays stopped'
complete -c zenlotctl -n __fish_use_subcommand -a doctor -d 'What works here, what does not, and why'
complete -c zenlotctl -n __fish_use_subcommand -l help -d 'How it is called'
complete -c zenlotctl -n __fish_use_subcommand -l version -d 'Which release this is'
complete -c zenlotctl -n '__fish_seen_subcommand_from list why doctor' -l json -d 'As an array of records'
complete -c zenlotctl -n '__fish_seen_subcommand_from list' -l offers -d 'For completions'
complete -c zenlotctl -n '__fish_seen_subcommand_from stop' -l yes -d 'Without a question'
# The ports that are listened on, with their owners.
complete -c zenlotctl -k -n '__fish_seen_subcommand_from check why stop' -a '(zenlotctl list --offers 2>/dev/null)'
