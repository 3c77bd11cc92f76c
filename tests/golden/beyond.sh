# A knot of ten crossings, 10_132, that shares its polynomials with 5_1; and two closures whose knots are not in the
# table.
loopwise knot --open 0 beyond.txt
loopwise survey --svg picture.svg beyond.txt
grep -o 'beads, [^<]*' picture.svg
loopwise survey --json beyond.txt | grep -o '"knots":.*"down_to_three"'
loopwise survey --csv beyond.txt | cut -d , -f 13-16,24
loopwise survey --each each.csv beyond.txt >/dev/null
grep -v 10_132 each.csv
loopwise fingerprint --closures 4 --step 70 --svg matrix.svg --matrix matrix.csv --pymol knot.pml beyond.txt
loopwise fingerprint --closures 4 --step 70 --json beyond.txt | grep -o '"knot":"[^"]*","names":[^]]*],"proven":[a-z]*'
loopwise fingerprint --closures 4 --step 70 --csv beyond.txt | cut -d , -f 6-8,18-
grep -o 'the whole chain is[^<]*' matrix.svg
grep -m 2 beyond matrix.csv
grep beyond_ten knot.pml
