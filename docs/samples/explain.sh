kestrel explain 'T8=5.1 Mix,Stereo;T4=Stereo, Stereo' || echo "exit code $?"
