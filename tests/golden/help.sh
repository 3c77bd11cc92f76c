# The help of the program and of every subcommand.
loopwise --help
for command in survey knot fingerprint close reduce check; do loopwise $command --help; done
loopwise help check | head -1
