# Every file of the folder as it comes: what is read of it, or the line that refuses it.
for file in odd/*; do
    loopwise survey --csv --threads 1 "$file" 2>&1 | grep -v ^file,
done
