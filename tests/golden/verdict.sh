# Verdicts on gaps: one that does not matter, one that the knot hangs on, and both. Numbers of residues stay.
awk '{ print NR, $2, $3, $4 }' trefoil.txt >numbered.txt
awk 'NR < 110 || NR > 114' numbered.txt >tail.txt
awk 'NR < 40 || NR > 60' numbered.txt >core.txt
awk '(NR < 40 || NR > 60) && (NR < 110 || NR > 114)' numbered.txt >both.txt
loopwise survey numbered.txt tail.txt core.txt both.txt | grep -A5 'beads, \|verdict' | grep 'beads, \|verdict\|alone'
loopwise survey --csv both.txt | cut -d, -f25-
loopwise survey --json both.txt | grep -o '"verdict":.*'
loopwise survey --method outside both.txt | grep verdict
loopwise survey --no-knots both.txt | grep -c verdict
loopwise fingerprint --closures 20 --step 30 both.txt | grep -A3 verdict
loopwise fingerprint --csv --closures 20 --step 30 tail.txt | cut -d, -f20-
