# Definitions of others: the share of a core, and the minimally interfering closure.
for share in 0.5 0.48 0.99; do
    loopwise fingerprint --closures 20 --step 30 --core-share $share --csv trefoil.txt | cut -d, -f8-12
done
loopwise fingerprint --closures 20 --step 30 --core-share 1 --json trefoil.txt | grep -o '"core_share[^,]*,\|"core":[^,]*,'
loopwise survey --method minimal trefoil.txt
loopwise close --method minimal trefoil.txt | tail -3
loopwise survey --method minimal --structure trefoil.txt 2>&1
