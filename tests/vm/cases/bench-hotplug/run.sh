# Two of a kind at once, one gone in mid-touch, and a new one afterwards.
watch
plug first magic-mouse-2
plug second magic-mouse-2
tell first 'touch 1 -300 0' 'touch 2 300 0' 'frame' 'button 1' 'frame'
finish first
unplug first
await watch '^removed \S+ bench/first'
tell second 'motion 4 4' 'frame'
finish second
plug third magic-mouse-2
tell third 'motion 9 9' 'frame'
finish third
await watch '^motion \S+ bench/third'
